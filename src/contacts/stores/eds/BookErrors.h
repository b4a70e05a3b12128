// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <gio/gio.h>

#include <optional>

/// What the daemon refused; nothing if it cannot be reached, so that the outcome of the call is unknown.
std::optional<ErrorKind> refusalOf(const GError *error);

/// Whether the call timed out and may still be in progress.
bool isTimeout(const GError *error);
