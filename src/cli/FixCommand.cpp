// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"
#include "cli/FindingsOfCondition.h"
#include "contacts/model/Utf8Text.h"

#include <QSet>

namespace {

QString shown(const ABValue &value)
{
    if (const auto *text = std::get_if<QString>(&value))
        return QLatin1Char('"') % *text % QLatin1Char('"');
    if (const auto *number = std::get_if<qint64>(&value))
        return QString::number(*number);
    if (const auto *date = std::get_if<QDate>(&value))
        return date->toString(Qt::ISODate);
    if (const auto *values = std::get_if<ABMultiValue>(&value))
        return QString::number(values->count())
            % (values->count() == 1 ? QStringLiteral(" entry") : QStringLiteral(" entries"));
    return QStringLiteral("nothing");
}

QStringList differences(const PersonRecord &before, const PersonRecord &after)
{
    QStringList lines;
    for (const ABPropertyInfo &info : allProperties()) {
        const ABValue was = before.value(info.property);
        const ABValue is = after.value(info.property);
        if (was != is)
            lines += QString(info.name) % QStringLiteral(": ") % shown(was) % QStringLiteral(" -> ") % shown(is);
    }
    return lines;
}

QStringList uidsOf(const QList<ABPersonPtr> &people)
{
    QStringList uids;
    for (const auto &person : people)
        uids += person->uniqueId();
    return uids;
}

/// What became of a person who was @p before, as far as it is saved.
QString changesOf(const FixOutcome &outcome, const PersonRecord &before, const ABPerson &person)
{
    if (outcome.cancelled)
        return QStringLiteral("cancelled, nothing changed");
    if (outcome.editsInContacts)
        return QStringLiteral("nothing changed; it is left to be edited in a contacts application");
    const QString removed = uidsOf(outcome.removed).join(QLatin1Char(' '));
    if (outcome.added)
        return QStringLiteral("merged ")
            % (removed.isEmpty() ? QStringLiteral("contacts that were gone already") : removed)
            % QStringLiteral(" into ") % outcome.added->uniqueId();
    if (!removed.isEmpty())
        return QStringLiteral("deleted ") % removed;
    const QStringList changes = differences(before, *person.record());
    return changes.isEmpty() ? QStringLiteral("nothing changed") : changes.join(QStringLiteral("; "));
}

/// What a finding's line begins with.
QString headOf(const PersonItem &node)
{
    return node.person()->uniqueId() % QStringLiteral("  ") % node.name() % QStringLiteral("  ");
}

class Repair
{
public:
    Repair(FindingsOfCondition &findings, const CommandContext &context) : m_findings(findings), m_context(context)
    {
        QObject::connect(&m_findings.controller(), &OutlineViewController::fixed, &m_findings.controller(),
            [this](const FixOutcome &outcome) { m_outcome = outcome; });
    }

    /// False: the rest must not be tried.
    bool run(const PersonItemPtr &node)
    {
        if (!m_findings.controller().model().contains(node))
            return true; // gone with an earlier finding
        if (node->person()->isRemoved()) { // by an earlier merge
            m_context.console.out << onOneLine(headOf(*node) % QStringLiteral("skipped: ") % kNoLongerThere) << '\n';
            return true;
        }
        const PersonRecordPtr before = node->person()->record();
        m_findings.controller().selectItem(node);
        m_findings.controller().FixFounction();
        if (m_findings.hasUnansweredQuestion()) {
            m_status = ExitStatus::Refused;
            return false;
        }
        if (!m_outcome.error) {
            m_context.console.out << onOneLine(headOf(*node) % changesOf(m_outcome, *before, *node->person())) << '\n';
            return true;
        }
        const QString &uid = node->person()->uniqueId();
        const bool isConflict = m_outcome.error->kind == ErrorKind::Conflict;
        m_status = m_context.refuse(uid % QStringLiteral(": not saved: ") % m_outcome.error->text);
        if (isConflict && m_outcome.added && !m_outcome.removed.isEmpty())
            m_context.report(uid
                % QStringLiteral(": the merge is incomplete; the address book's history holds whoever was removed"));
        // What this one could not save is pending, and the next save would write it after all. Only a conflict, where
        // the other change wins, and a repair that was taken back are settled.
        return isConflict || !m_outcome.error->uids.isEmpty();
    }

    ExitStatus status() const { return m_status; }
    void refuse() { m_status = ExitStatus::Refused; }

private:
    FindingsOfCondition &m_findings;
    const CommandContext &m_context;
    FixOutcome m_outcome;
    ExitStatus m_status = ExitStatus::Done;
};

} // namespace

ExitStatus runFix(const FixOptions &options, const CommandContext &context)
{
    const ConditionGroup *group = FindingsOfCondition::checkedGroup(options.group, options.option, context);
    if (!group)
        return ExitStatus::Usage;
    if (options.all == !options.uids.empty()) {
        context.report(QStringLiteral("fix: needs either uids or --all"));
        return ExitStatus::Usage;
    }
    const auto book = context.openAddressBookForChange();
    if (!book)
        return ExitStatus::Refused;
    FindingsOfCondition findings(*group, options.option, context.console, options.yes);
    Repair repair(findings, context);
    QList<PersonItemPtr> nodes = options.all ? findings.nodes() : QList<PersonItemPtr>();
    QSet<PersonItemPtr> named;
    for (const auto &argument : options.uids) {
        const PersonItemPtr node = findings.firstOf(textOfUtf8(argument), context);
        if (!node) {
            repair.refuse();
        } else if (!named.contains(node)) {
            named.insert(node);
            nodes += node;
        }
    }
    for (const auto &node : std::as_const(nodes)) {
        if (!repair.run(node))
            break;
    }
    return repair.status();
}
