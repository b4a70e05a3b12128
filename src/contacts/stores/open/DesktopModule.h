// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/stores/eds/EdsModule.h"

/// The module for the desktop's address books, which a program may lack.
namespace DesktopModule {

/// Loads it, once a run; it stays loaded. NotFound: there is no module beside this program, or one of another version,
/// or a library that it needs is not installed. The text says which.
Result<const EdsModule *> load();

/// Whether the session's bus could start the daemon. Starts nothing, and does not even ask without a session bus.
bool isOffered();

} // namespace DesktopModule
