// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fix/Finding.h"
#include "fix/LostValues.h"

/// What the option with this title would lose besides what it says: the values that no contact has any more when
/// duplicates are merged or deleted, or when an address is removed from one of those who share it. Nothing for other
/// options. Changes nothing.
std::vector<LostValue> leftBehind(const Finding &finding, const QString &option);
/// One line per value, with the title of its property.
QString linesOf(const std::vector<LostValue> &values);
