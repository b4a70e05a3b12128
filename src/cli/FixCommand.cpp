// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"
#include "cli/FindingsOfCondition.h"
#include "contacts/model/Utf8Text.h"
#include "results/FixAll.h"

#include <QSet>

namespace {

/// What became of a person who was @p before, as far as it is saved.
QString changesOf(const FixOutcome &outcome, const PersonRecord &before, const ABPerson &person)
{
    if (outcome.cancelled)
        return QStringLiteral("cancelled, nothing changed");
    if (outcome.editsInContacts)
        return QStringLiteral("nothing changed; it is left to be edited in a contacts application");
    const QString removed = uidsOf(outcome.removed).join(u' ');
    if (outcome.added)
        return QStringLiteral("merged ")
            % (removed.isEmpty() ? QStringLiteral("contacts that were gone already") : removed)
            % QStringLiteral(" into ") % outcome.added->uniqueId();
    if (!removed.isEmpty())
        return QStringLiteral("deleted ") % removed;
    QStringList changes;
    for (const RecordDifference &each : recordDifferences(&before, person.record().get()))
        changes += textOf(each);
    return changes.isEmpty() ? QStringLiteral("nothing changed") : changes.join(QStringLiteral("; "));
}

/// What a finding's line begins with.
QString headOf(const PersonItem &node)
{
    return node.person()->uniqueId() % QStringLiteral("  ") % node.name() % QStringLiteral("  ");
}

/// Prints what became of a finding; false where it was not saved.
bool report(const FixAll::Step &step, const CommandContext &context)
{
    const ABPerson &person = *step.finding->person();
    switch (step.end) {
    case FixAll::End::Covered:
        return true;
    case FixAll::End::Skipped:
        context.console.out << onOneLine(headOf(*step.finding) % QStringLiteral("skipped: ") % kNoLongerThere) << '\n';
        return true;
    case FixAll::End::Repaired:
    case FixAll::End::Cancelled:
        context.console.out << onOneLine(headOf(*step.finding) % changesOf(step.outcome, *step.before, person)) << '\n';
        return true;
    case FixAll::End::Failed:
        break;
    }
    const QString &uid = person.uniqueId();
    const Error &error = *step.outcome.error;
    context.report(uid % QStringLiteral(": not saved: ") % error.text);
    if (error.kind == ErrorKind::Conflict && step.outcome.added && !step.outcome.removed.isEmpty())
        context.report(uid
            % QStringLiteral(
                ": the merge is incomplete; the contacts that it removed are in the address book's history"));
    return false;
}

/// False: a question found no answer, or something could not be saved.
bool repair(const QList<PersonItemPtr> &nodes, FindingsOfCondition &findings, const CommandContext &context)
{
    bool isDone = true;
    FixAll repairs(findings.controller(), nodes, findings.alertPanel());
    while (!repairs.isAtEnd()) {
        const FixAll::Step step = repairs.next();
        if (findings.hasUnansweredQuestion())
            return false;
        isDone = report(step, context) && isDone;
    }
    return isDone;
}

} // namespace

ExitStatus runFix(const FixOptions &options, const CommandContext &context)
{
    const ConditionGroup *group = FindingsOfCondition::checkedGroup(options.group, options.option, context);
    if (!group)
        return ExitStatus::Usage;
    if (options.all == !options.uids.empty())
        return context.refuse(QStringLiteral("fix: needs either uids or --all"), ExitStatus::Usage);
    const auto book = context.openAddressBookForChange();
    if (!book)
        return ExitStatus::Refused;
    FindingsOfCondition findings(*group, options.option, context.console, options.yes);
    bool isDone = true;
    QList<PersonItemPtr> nodes = options.all ? findings.nodes() : QList<PersonItemPtr>();
    QSet<PersonItemPtr> named;
    for (const auto &argument : options.uids) {
        const PersonItemPtr node = findings.firstOf(textOfUtf8(argument), context);
        if (!node) {
            isDone = false;
        } else if (!named.contains(node)) {
            named.insert(node);
            nodes += node;
        }
    }
    isDone = repair(nodes, findings, context) && isDone;
    return isDone ? ExitStatus::Done : ExitStatus::Refused;
}
