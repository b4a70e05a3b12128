// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QUrl>

class ActivityLog;

/// Opens a file, folder or page with the desktop's program for it. False where that failed; @p log then says so.
bool openOutside(const QUrl &what, ActivityLog &log);
