// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <gio/gio.h>

#include <optional>

/// What a daemon's error says was refused; nothing where it only says that the daemon cannot be reached, so that the
/// outcome of the call is unknown.
std::optional<ErrorKind> refusalOf(const GError *error);

/// Whether nobody answered in time: who was asked may still be at it.
bool isTimeout(const GError *error);
