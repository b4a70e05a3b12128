// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/activity/AppLog.h"

Q_LOGGING_CATEGORY(lcApp, "peoplenook.app")
Q_LOGGING_CATEGORY(lcAppTrace, "peoplenook.app.trace", QtWarningMsg)
