// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/fields/TableLog.h"

Q_LOGGING_CATEGORY(lcTable, "peoplenook.table")
Q_LOGGING_CATEGORY(lcTableOut, "peoplenook.table.stdout")
