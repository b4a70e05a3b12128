// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/UndoSteps.h"

#include "app/look/Counted.h"
#include "contacts/book/RestorePlan.h"
#include "fix/IgnoredFindings.h"

namespace {

QString messageOf(const ChangeCause &cause)
{
    switch (cause.kind) {
    case ChangeCause::Kind::Edit:
        return UndoSteps::tr("%1 changed").arg(cause.description);
    case ChangeCause::Kind::Deletion:
        return UndoSteps::tr("%1 deleted").arg(cause.description);
    case ChangeCause::Kind::Import:
        return UndoSteps::tr("%1 imported").arg(cause.description);
    case ChangeCause::Kind::Card:
        return UndoSteps::tr("%1 saved").arg(cause.description);
    case ChangeCause::Kind::Restore:
        return UndoSteps::tr("%1 restored").arg(cause.description);
    case ChangeCause::Kind::Repair:
        if (const auto group = cause.description.indexOf(QStringLiteral(": ")); group >= 0)
            return cause.description.sliced(group + 2); // what was done; the group says why
        return cause.description;
    case ChangeCause::Kind::Other:
        break;
    }
    return textOf(cause);
}

QString messageOf(const std::vector<Ignored> &entries, bool isIgnored)
{
    const Ignored &first = entries.front();
    if (entries.size() == 1 && first.condition.isEmpty() && isIgnored)
        return UndoSteps::tr("Remembered as different people");
    const QString what = entries.size() == 1
        ? textOf(first)
        : counted(qint64(entries.size()), UndoSteps::tr("finding"), UndoSteps::tr("findings"));
    return (isIgnored ? UndoSteps::tr("%1 ignored") : UndoSteps::tr("%1 brought back")).arg(what);
}

/// Puts everybody back whom the cause changed, as the change @p restoring. @return their uids
Result<QStringList> putBack(ABAddressBook &book, const QString &causeId, const ChangeCausePtr &restoring)
{
    const auto plan = planRestore(book, {causeId});
    if (!plan)
        return plan.error();
    if (const auto applied = book.apply(plan->changes, restoring); !applied)
        return applied.error();
    QStringList uids;
    for (const RecordChange &change : plan->changes)
        uids += change.uid;
    return uids;
}

/// @return whose findings that concerns
Result<QStringList> setIgnored(ABAddressBook &book, const std::vector<Ignored> &entries, bool isIgnored)
{
    QStringList ids;
    QStringList uids;
    for (const Ignored &entry : entries) {
        ids += entry.id();
        uids += entry.uids;
    }
    const auto done = isIgnored ? book.changeIgnored(entries, {}) : book.changeIgnored({}, ids);
    return done ? Result<QStringList>(uids) : done.error();
}

} // namespace

UndoSteps::~UndoSteps()
{
    if (m_book)
        m_book->setCauseListener({});
}

void UndoSteps::watch(std::shared_ptr<ABAddressBook> book)
{
    if (m_book)
        m_book->setCauseListener({});
    m_job.drop();
    m_isBusy = false;
    m_done.clear();
    m_undone.clear();
    m_book = std::move(book);
    m_book->setCauseListener(
        [this](const ChangeCausePtr &cause) { Job::deliver(this, [this, cause] { note(cause); }); });
    Q_EMIT changed();
}

void UndoSteps::note(const ChangeCausePtr &cause)
{
    // Several saves of one cause are one step.
    if (cause->id == m_ownCauseId || (!m_done.empty() && m_done.back().causeId == cause->id))
        return;
    const QString message = messageOf(*cause);
    add({cause->id, message}, cause->kind == ChangeCause::Kind::Repair ? QString() : message);
}

void UndoSteps::noteIgnored(const std::vector<Ignored> &entries, bool isIgnored)
{
    const QString message = messageOf(entries, isIgnored);
    add({makeCause(ChangeCause::Kind::Other)->id, message, entries, isIgnored}, message);
}

void UndoSteps::add(const Step &step, const QString &message)
{
    m_done.push_back(step);
    m_undone.clear();
    Q_EMIT changed();
    Q_EMIT noted(message);
}

void UndoSteps::takeBack(Steps &from, Steps &to)
{
    if (from.empty() || m_isBusy)
        return;
    m_isBusy = true;
    const Step step = from.back();
    const auto restoring = makeCause(ChangeCause::Kind::Restore, step.what);
    m_ownCauseId = restoring->id;
    m_job.start(
        [book = m_book, step, restoring, isUndo = &from == &m_done] {
            return step.ignored.empty() ? putBack(*book, step.causeId, restoring)
                                        : setIgnored(*book, step.ignored, step.isIgnored != isUndo);
        },
        [this, &from, &to, step, restoring](
            const Result<QStringList> &uids) { finish(from, to, step, restoring->id, uids); });
    Q_EMIT changed();
}

void UndoSteps::finish(
    Steps &from, Steps &to, const Step &step, const QString &restoringId, const Result<QStringList> &uids)
{
    m_isBusy = false;
    const bool isUndo = &from == &m_done;
    const bool mayWorkLater =
        !uids && (uids.error().kind == ErrorKind::Unavailable || uids.error().kind == ErrorKind::Io);
    if (!mayWorkLater) // what was changed since stays so; the step before may still be taken back
        std::erase_if(from, [&](const Step &each) { return each.causeId == step.causeId; });
    if (uids) {
        to.push_back({restoringId, step.what, step.ignored, step.isIgnored});
        Q_EMIT applied(*uids, (isUndo ? tr("Undone: %1") : tr("Repeated: %1")).arg(step.what));
    } else {
        Q_EMIT failed((isUndo ? tr("This cannot be undone: %1") : tr("This cannot be repeated: %1"))
                          .arg(uids.error().description()));
    }
    Q_EMIT changed();
}
