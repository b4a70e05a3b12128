// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLocale>

/// "1 contact", "1,204 contacts".
inline QString counted(qint64 count, const QString &one, const QString &several)
{
    return QLocale().toString(count) + QLatin1Char(' ') + (count == 1 ? one : several);
}
