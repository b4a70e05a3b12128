// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

/// Whether a zip file of XML parts can be read to its end: its directory and checksums hold, and each part closes the
/// element it begins with.
Result<void> checkWholePackage(const QByteArray &path);
