// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/RestorePlan.h"

#include "contacts/model/NameTexts.h"

#include <QHash>
#include <QSet>

namespace {

bool isSame(const ABAddressBook &book, const PersonRecordPtr &a, const PersonRecordPtr &b)
{
    if (!a || !b)
        return !a && !b;
    return book.comparesKeptLines() ? *a == *b : a->hasSameValues(*b);
}

/// Why a person that is @p now is not as a change left it.
Error conflict(const RecordedChange &left, const PersonRecordPtr &now)
{
    QString reason = QStringLiteral("was changed since");
    if (left.after && !now)
        reason = QStringLiteral("was removed since");
    else if (!left.after && !left.afterIsLost)
        reason = QStringLiteral("is in the address book again");
    const PersonRecordPtr named = now ? now : left.after ? left.after : left.before;
    return Error{ErrorKind::Conflict,
        (named ? withReadableName(left.uid, *named) : left.uid) % QStringLiteral(": ") % reason
            % QStringLiteral("; nothing was restored")};
}

void add(RestorePlan &plan, RecordChange change)
{
    if (!change.before)
        ++plan.added;
    else
        ++(change.after ? plan.changed : plan.removed);
    plan.changes.push_back(std::move(change));
}

/// Each of the causes once, newest first: the order in which their steps can be taken back.
Result<std::vector<ChangeStep>> stepsOf(ABAddressBook &book, const QStringList &causeIds)
{
    QStringList ordered = causeIds;
    if (causeIds.size() > 1) {
        const auto history = book.history();
        if (!history)
            return history.error();
        QSet<QString> wanted(causeIds.begin(), causeIds.end());
        ordered.clear();
        for (const ChangeSummary &summary : *history) {
            if (wanted.remove(summary.cause.id))
                ordered += summary.cause.id;
        }
        ordered += wanted.values(); // what is unknown is refused where it is read
    }
    std::vector<ChangeStep> steps;
    for (const QString &id : ordered) {
        auto step = book.historyStep(id);
        if (!step)
            return step.error();
        steps.push_back(std::move(*step));
    }
    return steps;
}

} // namespace

Result<RestorePlan> planRestore(ABAddressBook &book, const QStringList &causeIds)
{
    if (const auto caughtUp = book.catchUp(); !caughtUp)
        return caughtUp.error();
    const auto steps = stepsOf(book, causeIds);
    if (!steps)
        return steps.error();
    QHash<QString, std::size_t> placeOf;
    std::vector<RecordChange> touched; // what is there, and what would be there
    for (const ChangeStep &step : *steps) {
        // Backwards through the saves of the step, so that each one is taken back from what it left.
        for (auto change = step.changes.rbegin(); change != step.changes.rend(); ++change) {
            auto place = placeOf.find(change->uid);
            if (place == placeOf.end()) {
                place = placeOf.insert(change->uid, touched.size());
                const ABPersonPtr person = book.personWithUniqueId(change->uid);
                const PersonRecordPtr now = person ? person->record() : nullptr;
                touched.push_back({change->uid, now, now});
            }
            RecordChange &undone = touched[*place];
            if (change->afterIsLost || !isSame(book, undone.after, change->after))
                return conflict(*change, undone.after);
            undone.after = change->before;
        }
    }
    RestorePlan plan;
    plan.description = steps->size() == 1 ? textOf(steps->front().summary.cause)
                                          : QString(QString::number(steps->size()) % QStringLiteral(" changes"));
    // Those who were saved first are restored first.
    for (auto change = touched.rbegin(); change != touched.rend(); ++change) {
        if (!isSame(book, change->before, change->after))
            add(plan, std::move(*change));
    }
    if (plan.changes.empty())
        return Error{ErrorKind::Invalid,
            QStringLiteral("there is nothing to restore: all contacts are already as they were before")};
    return plan;
}

Result<RestorePlan> planReplacement(ABAddressBook &book, const std::vector<StoredRecord> &wanted)
{
    if (const auto caughtUp = book.catchUp(); !caughtUp)
        return caughtUp.error();
    const PeopleSnapshot people = book.snapshot();
    QHash<QString, PersonRecordPtr> left; // to be removed, unless they are wanted
    left.reserve(qsizetype(people->size()));
    for (const auto &[person, record] : *people)
        left.insert(person->uniqueId(), record);
    RestorePlan plan;
    for (const auto &[uid, record] : wanted) {
        const PersonRecordPtr now = left.take(uid);
        if (!isSame(book, now, record))
            add(plan, {uid, now, record});
    }
    for (const auto &[person, record] : *people) {
        if (left.contains(person->uniqueId()))
            add(plan, {person->uniqueId(), record, nullptr});
    }
    return plan;
}

Result<void> restore(ABAddressBook &book, const RestorePlan &plan)
{
    const auto applied = book.apply(plan.changes, makeCause(ChangeCause::Kind::Restore, plan.description));
    return applied && !plan.ignored.empty() ? book.changeIgnored(plan.ignored, {}) : applied;
}
