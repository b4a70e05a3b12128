// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

class QWidget;

enum class FilesAsked { ToOpen, SeveralToOpen, ToSave, Folder };

/// Asks the user for files or a folder; empty if cancelled. @p start is a folder, or a proposed file name in one. Use
/// only these dialogs: Qt's icons, and dialogs that a desktop adds to the process, open every file they list, and
/// closing the open address book that way drops this process's locks on it.
QStringList askForFiles(
    QWidget *parent, FilesAsked asked, const QString &title, const QString &start, const QString &filter = {});
