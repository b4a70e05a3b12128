// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/ResultsLog.h"

Q_LOGGING_CATEGORY(lcResults, "peoplenook.results")
