// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/FindingsOfCondition.h"

#include "scan/ScanAddressBook.h"

namespace {

QString listOf(const QStringList &names)
{
    return u'"' % names.join(QStringLiteral("\", \"")) % u'"';
}

} // namespace

const ConditionGroup *FindingsOfCondition::checkedGroup(
    const std::string &group, const std::string &option, const CommandContext &context)
{
    const QString name = QString::fromStdString(group);
    const ConditionGroup *row = conditionGroupNamed(name);
    if (!row) {
        QStringList names;
        for (const ConditionGroup &known : conditionGroups())
            names += known.name;
        context.report(
            QStringLiteral("--group: there is no group \"") % name % QStringLiteral("\"; there are ") % listOf(names));
        return nullptr;
    }
    const QString title = QString::fromStdString(option);
    if (!optionTitled(row->optionGroup, title)) {
        QStringList titles;
        for (const QLatin1StringView offered : optionGroupInfo(row->optionGroup).titles)
            titles += offered;
        context.report(QStringLiteral("--option: \"") % name % QStringLiteral("\" has no option \"") % title
            % QStringLiteral("\"; it has ") % listOf(titles));
        return nullptr;
    }
    return row;
}

FindingsOfCondition::FindingsOfCondition(
    const ConditionGroup &group, const std::string &option, Console &console, bool answeredInAdvance)
    : m_group(group), m_alertPanel(console, answeredInAdvance), m_controller(*this)
{
    m_controller.setOutlineViewDataSouce(ScanAddressBook::examine({conditionInfo(group.condition).title}));
    m_controller.chooseOption(group.optionGroup, QString::fromStdString(option));
}

QList<PersonItemPtr> FindingsOfCondition::nodes() const
{
    const auto &groups = m_controller.rootNodes();
    return groups.isEmpty() ? QList<PersonItemPtr>() : groups.front()->childrenArray();
}

PersonItemPtr FindingsOfCondition::firstOf(const QString &uid, const CommandContext &context)
{
    if (m_firstNodes.isEmpty()) {
        for (const auto &node : nodes()) {
            if (!m_firstNodes.contains(node->person()->uniqueId()))
                m_firstNodes.insert(node->person()->uniqueId(), node);
        }
    }
    if (const auto found = m_firstNodes.constFind(uid); found != m_firstNodes.constEnd())
        return *found;
    if (ABAddressBook::sharedAddressBook()->personWithUniqueId(uid))
        context.report(uid % QStringLiteral(": is not among the findings of \"") % m_group.name % u'"');
    else
        context.reportMissing(uid);
    return nullptr;
}
