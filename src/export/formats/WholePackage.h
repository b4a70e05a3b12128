// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

/// Checks that a zip file of XML parts is complete: its directory and checksums are valid, and each part closes its
/// root element.
Result<void> checkWholePackage(const QByteArray &path);
