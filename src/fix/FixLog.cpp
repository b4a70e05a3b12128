// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/FixLog.h"

Q_LOGGING_CATEGORY(lcFix, "peoplenook.fix")
Q_LOGGING_CATEGORY(lcFixStdout, "peoplenook.fix.stdout")
