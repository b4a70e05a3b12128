// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "results/PersonItem.h"
#include "scan/ScanResult.h"

#include <QSet>

/// The findings of a group that are none any more, among those of people with the uids @p changed. @p now is what a
/// scan for the group's condition finds now, nullptr for nothing. Findings that still hold are brought up to date.
QList<PersonItemPtr> noLongerFound(const PersonItem &group, const Findings *now, const QSet<QString> &changed);
