// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/PersonItem.h"

#include "contacts/model/NameTexts.h"
#include "contacts/model/RecordDifferences.h"
#include "results/ConditionGroups.h"

#include <algorithm>

PersonItemPtr PersonItem::initFatherNodeWithName(const QString &name)
{
    auto group = std::make_shared<PersonItem>();
    group->m_name = name;
    group->m_isRootNode = true;
    return group;
}

PersonItemPtr PersonItem::initChildNodeWithPerson(const ABPersonPtr &person)
{
    auto child = std::make_shared<PersonItem>();
    child->m_finding.person = person;
    child->m_name = displayName(*person->record());
    return child;
}

qsizetype PersonItem::indexOfChild(const PersonItem *child) const
{
    const auto found = std::ranges::find(m_childrenArray, child, &PersonItemPtr::get);
    return found == m_childrenArray.end() ? -1 : found - m_childrenArray.begin();
}

/// Made once for each record of the contact: every letter that is typed needs it of all findings.
const QString &PersonItem::searchText() const
{
    const PersonRecordPtr record = person()->record();
    if (record == m_searchedRecord)
        return m_searchText;
    const ConditionGroup &group = conditionGroup(m_finding.condition);
    QString text = m_name % u'\n' % group.rowDescription % u'\n' % group.name;
    for (const ABPropertyInfo &info : allProperties()) {
        if (info.kind == ABPropertyKind::Text)
            text += u'\n' % record->textOrEmpty(info.property);
        else if (info.kind != ABPropertyKind::Integer)
            text += u'\n' % valueText(record->value(info.property));
    }
    m_searchText = text.toCaseFolded();
    m_searchedRecord = record;
    return m_searchText;
}

QString PersonItem::whyNotFixable() const
{
    if (isGone())
        return QStringLiteral("This contact is no longer in the address book.");
    if (person() && person()->isDamaged())
        return QStringLiteral(
            "This contact is damaged: it is not as it was saved. Open it to restore it from a backup.");
    return {};
}
