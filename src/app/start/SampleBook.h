// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <QString>

/// Where the sample address book is, or will be.
QString sampleBookPath();

/// The file of the sample address book, beside the user's own; filled with invented people where it is missing or
/// empty. Any thread.
Result<QString> sampleBook();
