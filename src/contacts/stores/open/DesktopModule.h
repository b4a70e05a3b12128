// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/stores/eds/EdsModule.h"

/// The optional module for the desktop's address books.
namespace DesktopModule {

/// Loads the module once per run; it stays loaded. NotFound: it is missing, of another version, or lacks a library; the
/// text says which.
Result<const EdsModule *> load();

/// Whether the session bus could start the daemon. Does not start it; false without a session bus.
bool isOffered();

} // namespace DesktopModule
