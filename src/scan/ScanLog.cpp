// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "scan/ScanLog.h"

Q_LOGGING_CATEGORY(lcScan, "peoplenook.scan")
Q_LOGGING_CATEGORY(lcScanTrace, "peoplenook.scan.trace", QtWarningMsg)
