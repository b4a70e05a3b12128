// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/OpenOutside.h"

#include "app/ActivityLog.h"

#include <QDesktopServices>

bool openOutside(const QUrl &what, ActivityLog &log)
{
    if (QDesktopServices::openUrl(what))
        return true;
    log.append(ActivityLog::Kind::Failure,
        ActivityLog::tr("%1 cannot be shown: no program was found that opens it")
            .arg(what.toDisplayString(QUrl::PreferLocalFile)));
    return false;
}
