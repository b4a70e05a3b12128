// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

class ActivityLog;
class QObject;
class QUrl;

/// Opens a file, folder or page with the desktop's program for it. Returns immediately; @p log reports failures later.
void openOutside(const QUrl &what, ActivityLog &log);

/// The same for a resource of the program, copied to the user's cache each time. Calls @p opened later, unless @p
/// context is gone by then.
void openCopyOutside(
    const QString &resource, const QString &fileName, QObject *context, const std::function<void(bool isOpen)> &opened);
