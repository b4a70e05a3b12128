// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/book/ChangeCause.h"
#include "contacts/model/PersonRecord.h"

#include <QDateTime>

#include <chrono>
#include <functional>
#include <vector>

/// An entry of the history: what was saved for one cause.
struct ChangeSummary
{
    ChangeCause cause;
    QDateTime savedAt; ///< UTC, of its last save; invalid if the store does not know it
    qint64 added = 0; ///< counted per save: a person changed by two saves of one cause counts twice
    qint64 changed = 0;
    qint64 removed = 0;

    /// Counts a change of one person, who was or is stored.
    void count(bool wasThere, bool isThere);
};

/// What a save did to one person.
struct RecordedChange
{
    QString uid;
    PersonRecordPtr before; ///< null: there was no such person
    PersonRecordPtr after; ///< null: the person was removed, or `afterIsLost`
    /// The result is unknown: the person was later changed without the history.
    bool afterIsLost = false;
};

/// Everything saved for one cause, in the order of saving.
struct ChangeStep
{
    ChangeSummary summary;
    std::vector<RecordedChange> changes;
};

Error noSuchCause(const QString &causeId);

/// How long history is kept: a cause older than `kHistoryAge` goes once it is not among the newest `kHistoryCount`
/// either.
inline constexpr std::chrono::days kHistoryAge{90};
inline constexpr std::size_t kHistoryCount = 1000;

/// Decides which causes have outlived both. Age is added up from save to save, counting a longer pause as a day, so
/// neither a clock that is temporarily years ahead nor an unused book ages anything.
class Forgetting
{
public:
    /// Call for each cause, newest first, with the time of its last save. Once true, it stays true.
    bool isForgotten(const QDateTime &savedAt);

private:
    QDateTime m_newer; // of the cause before
    std::size_t m_place = 0;
    std::chrono::milliseconds m_age{0};
};

/// The current time; tests pass another one.
using Clock = std::function<QDateTime()>;
QDateTime currentTime(); // UTC
