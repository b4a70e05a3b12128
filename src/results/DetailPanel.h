// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fix/RepairOptions.h"
#include "results/PersonItem.h"

#include <QByteArray>
#include <QPoint>

/// What the panel beside the tree shows of the selected finding.
struct DetailPanel
{
    QString name;
    QByteArray picture; ///< as an image file; empty: the image resource "BigHead.png"
    QString email; ///< one of the person's; empty when there is none
    QString problemText;
    std::optional<OptionGroup> optionGroup; ///< shown to choose a repair from; none before the first selection
    QPoint optionGroupOrigin; ///< in the box that holds it; y grows upwards
};

/// What the panel shows of a finding's node.
DetailPanel detailPanelOf(const PersonItem &node);
