// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/EdsLog.h"

Q_LOGGING_CATEGORY(lcEds, "peoplenook.eds")
