// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <QString>

/// The path of the sample address book, which may not exist yet.
QString sampleBookPath();

/// The sample address book's file, beside the user's; filled with invented people if missing or empty. Any thread.
Result<QString> sampleBook();
