// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fix/RepairOptions.h"
#include "results/PersonItem.h"

#include <QByteArray>
#include <QPoint>

/// The panel beside the tree, for the selected finding.
struct DetailPanel
{
    QString name;
    QByteArray picture; ///< as an image file; empty: the image resource "BigHead.png"
    QString email; ///< one of the person's; empty without one
    QString problemText;
    std::optional<OptionGroup> optionGroup; ///< the repairs offered; none before the first selection
    QPoint optionGroupOrigin; ///< in its box; y grows upwards
};

DetailPanel detailPanelOf(const PersonItem &node);
