// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/ExportLog.h"

Q_LOGGING_CATEGORY(lcExport, "peoplenook.export")
