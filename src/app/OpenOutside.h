// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QUrl>

class ActivityLog;

/// Opens a file, folder or page with the desktop's program for it. False where that failed; @p log then says so.
bool openOutside(const QUrl &what, ActivityLog &log);

/// The same for something inside the program: a copy in the user's cache, written anew each time.
bool openCopyOutside(const QString &resource, const QString &fileName, ActivityLog &log);
