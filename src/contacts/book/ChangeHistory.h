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

struct RecordedChange;

/// A line of the history: what was saved for one cause.
struct ChangeSummary
{
    ChangeCause cause;
    QDateTime savedAt; ///< UTC, of its last save; invalid where the store does not know it
    qint64 added = 0; ///< counted per save: a person whom two saves of one cause changed counts twice
    qint64 changed = 0;
    qint64 removed = 0;

    void count(const RecordedChange &change);
};

/// What a save did to one person.
struct RecordedChange
{
    QString uid;
    PersonRecordPtr before; ///< null: there was no such person
    PersonRecordPtr after; ///< null: the person was removed, or `afterIsLost`
    /// What the change left is no longer known: the person was changed later without the history.
    bool afterIsLost = false;
};

/// Everything that was saved for one cause, in the order in which it was saved.
struct ChangeStep
{
    ChangeSummary summary;
    std::vector<RecordedChange> changes;
};

/// NotFound.
Error noSuchCause(const QString &causeId);

/// How long a history is kept: what is older than `kHistoryAge` goes once it is not among the newest `kHistoryCount`
/// causes either.
inline constexpr std::chrono::days kHistoryAge{90};
inline constexpr std::size_t kHistoryCount = 1000;

/// Decides which causes have outlived both. Age is counted from save to save, and a longer pause counts as a day: a
/// clock that is years ahead for a while, or a book that did not change for years, ages nothing else.
class Forgetting
{
public:
    /// To be asked about each cause, newest first, with the time of its last save. Once true, it stays true.
    bool isForgotten(const QDateTime &savedAt);

private:
    QDateTime m_newer; // of the cause before
    std::size_t m_place = 0;
    std::chrono::milliseconds m_age{0};
};

/// What time it is; passed in by tests.
using Clock = std::function<QDateTime()>;
QDateTime currentTime(); // UTC
