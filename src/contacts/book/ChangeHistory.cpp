// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/ChangeHistory.h"

#include <algorithm>

void ChangeSummary::count(bool wasThere, bool isThere)
{
    ++(!wasThere ? added : isThere ? changed : removed);
}

Error noSuchCause(const QString &causeId)
{
    return {ErrorKind::NotFound, causeId % QStringLiteral(": the history holds no such change")};
}

bool Forgetting::isForgotten(const QDateTime &savedAt)
{
    using std::chrono::milliseconds;
    constexpr milliseconds kLongestPause = std::chrono::days(1);
    m_age += std::clamp(milliseconds(savedAt.msecsTo(m_newer)), milliseconds(0), kLongestPause); // 0 for the first
    m_newer = savedAt;
    return m_place++ >= kHistoryCount && m_age > kHistoryAge;
}

QDateTime currentTime()
{
    return QDateTime::currentDateTimeUtc();
}
