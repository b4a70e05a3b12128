// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/DetailPanel.h"

#include "fix/EmailSlots.h"
#include "results/ConditionGroups.h"

DetailPanel detailPanelOf(const PersonItem &node)
{
    constexpr int kOptionGroupX = 16;
    const Finding &finding = node.finding();
    const ConditionGroup &group = conditionGroup(finding.condition);
    return {node.name(), finding.person->imageData().value_or(QByteArray()),
        EmailSlots(*finding.person->record()).preferred(), problemText(finding), group.optionGroup,
        {kOptionGroupX, group.optionGroupY}};
}
