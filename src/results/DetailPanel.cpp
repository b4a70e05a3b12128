// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/DetailPanel.h"

#include "fix/EmailSlots.h"
#include "results/ConditionGroups.h"

namespace {

constexpr int kOptionGroupX = 16;

const ConditionGroup *groupOf(const PersonItem &node)
{
    const PersonItemPtr parent = node.parentNode();
    return parent ? conditionGroupNamed(parent->name()) : nullptr;
}

} // namespace

Finding findingOf(const PersonItem &node)
{
    const ConditionGroup *group = groupOf(node);
    return {
        group ? group->condition : Condition(), node.person(), node.duplicateEmailArray(), node.duplicateEmailType()};
}

DetailPanel detailPanelOf(const PersonItem &node)
{
    DetailPanel panel;
    panel.name = node.name();
    panel.picture = node.person()->imageData().value_or(QByteArray());
    panel.email = EmailSlots(*node.person()->record()).preferred();
    if (const ConditionGroup *group = groupOf(node)) {
        panel.problemText = group->problemText(findingOf(node));
        panel.optionGroup = group->optionGroup;
        panel.optionGroupOrigin = {kOptionGroupX, group->optionGroupY};
    }
    return panel;
}
