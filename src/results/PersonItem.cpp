// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/PersonItem.h"

#include "contacts/model/NameTexts.h"

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

QString PersonItem::whyNotFixable() const
{
    if (isGone())
        return QStringLiteral("This contact is no longer in the address book.");
    if (person() && person()->isDamaged())
        return QStringLiteral(
            "This contact is damaged: it is not as it was saved. Open it to restore it from a backup.");
    return {};
}
