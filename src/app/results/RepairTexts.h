// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "results/FixAll.h"

/// What the repair with this title will do to so many contacts, as a sentence.
QString futureOfRepair(const QString &option, qsizetype contacts);
/// What it did, what was skipped and what failed; empty where nothing of that happened.
QString pastOfRepair(const QString &option, const FixReport &report);
