// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/Commands.h"

/// "1 added, 3 removed"; what is 0 is left out unless everything is.
QString countsText(qint64 added, qint64 changed, qint64 removed);

/// Carries the plan out and prints what it did, or why it could not be made or carried out.
ExitStatus applyAndReport(ABAddressBook &book, const Result<RestorePlan> &plan, const CommandContext &context);
