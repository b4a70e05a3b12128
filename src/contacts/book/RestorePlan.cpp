// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/RestorePlan.h"

#include "contacts/model/NameTexts.h"

#include <QHash>

namespace {

bool isSame(const PersonRecordPtr &a, const PersonRecordPtr &b, const SameRecord &same)
{
    return a && b ? same(*a, *b) : !a && !b;
}

/// Why a person that is @p now is not as a change left it.
QString differenceFrom(const RecordedChange &left, const PersonRecordPtr &now)
{
    if (left.after && !now)
        return QStringLiteral("was removed since");
    if (!left.after && !left.afterIsLost)
        return QStringLiteral("is in the address book again");
    return QStringLiteral("was changed since");
}

Error conflict(const RecordedChange &left, const PersonRecordPtr &now)
{
    const PersonRecordPtr named = now ? now : left.after ? left.after : left.before;
    return Error{ErrorKind::Conflict,
        (named ? withReadableName(left.uid, *named) : left.uid) % QStringLiteral(": ") % differenceFrom(left, now)
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

} // namespace

Result<RestorePlan> planRestore(
    const std::vector<ChangeStep> &steps, const CurrentRecord &current, const SameRecord &same)
{
    QHash<QString, std::size_t> placeOf;
    std::vector<RecordChange> touched; // what is there, and what would be there
    for (const ChangeStep &step : steps) {
        // Backwards through the saves of the step, so that each one is taken back from what it left.
        for (auto change = step.changes.rbegin(); change != step.changes.rend(); ++change) {
            auto place = placeOf.find(change->uid);
            if (place == placeOf.end()) {
                place = placeOf.insert(change->uid, touched.size());
                const PersonRecordPtr now = current(change->uid);
                touched.push_back({change->uid, now, now});
            }
            RecordChange &undone = touched[*place];
            if (change->afterIsLost || !isSame(undone.after, change->after, same))
                return conflict(*change, undone.after);
            undone.after = change->before;
        }
    }
    RestorePlan plan;
    plan.description = steps.size() == 1 ? textOf(steps.front().summary.cause)
                                         : QString(QString::number(steps.size()) % QStringLiteral(" changes"));
    // Whoever was saved first is restored first.
    for (auto change = touched.rbegin(); change != touched.rend(); ++change) {
        if (!isSame(change->before, change->after, same))
            add(plan, std::move(*change));
    }
    if (plan.changes.empty())
        return Error{ErrorKind::Invalid, QStringLiteral("there is nothing to restore: everybody is as before already")};
    return plan;
}

RestorePlan planReplacement(
    const std::vector<StoredRecord> &current, const std::vector<StoredRecord> &wanted, const SameRecord &same)
{
    QHash<QString, PersonRecordPtr> there;
    there.reserve(qsizetype(current.size()));
    for (const auto &[uid, record] : current)
        there.insert(uid, record);
    QHash<QString, bool> isWanted;
    isWanted.reserve(qsizetype(wanted.size()));
    RestorePlan plan;
    for (const auto &[uid, record] : wanted) {
        isWanted.insert(uid, true);
        const PersonRecordPtr now = there.value(uid);
        if (!isSame(now, record, same))
            add(plan, {uid, now, record});
    }
    for (const auto &[uid, record] : current) {
        if (!isWanted.contains(uid))
            add(plan, {uid, record, nullptr});
    }
    return plan;
}
