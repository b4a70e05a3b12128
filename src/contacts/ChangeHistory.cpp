// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/ChangeHistory.h"

void ChangeSummary::count(const RecordedChange &change)
{
    ++(!change.before ? added : change.after || change.afterIsLost ? changed : removed);
}

Error noSuchCause(const QString &causeId)
{
    return {ErrorKind::NotFound, causeId % QStringLiteral(": the history holds no such change")};
}

bool isForgotten(const QDateTime &savedAt, std::size_t place, const QDateTime &now)
{
    return place >= kHistoryCount && savedAt.addDuration(kHistoryAge) < now;
}

QDateTime currentTime()
{
    return QDateTime::currentDateTimeUtc();
}
