// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

class QWidget;

enum class FilesAsked { ToOpen, SeveralToOpen, ToSave, Folder };

/// Asks the user for files or a folder; empty when cancelled. @p start is a folder, or the proposed name of a file in
/// one. All file dialogs come from here: Qt's usual icons, and dialogs that a desktop puts into the process, open every
/// file they list, and closing the open address book that way drops the locks that this process holds on it.
QStringList askForFiles(
    QWidget *parent, FilesAsked asked, const QString &title, const QString &start, const QString &filter = {});
