// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

class ActivityLog;
class QObject;
class QUrl;

/// Opens a file, folder or page with the desktop's program for it. Returns at once; where that fails, @p log says so
/// later.
void openOutside(const QUrl &what, ActivityLog &log);

/// The same for something inside the program: a copy in the user's cache, written each time. @p opened is told later,
/// unless @p context is gone by then.
void openCopyOutside(
    const QString &resource, const QString &fileName, QObject *context, const std::function<void(bool isOpen)> &opened);
