// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/book/AddressBookStore.h"

#include <chrono>
#include <memory>
#include <vector>

// What programs see of the Evolution Data Server module. They load it only when needed, so that they start without
// libebook. Both come from one build, which EdsModule::version checks.

/// An address book and how to open it.
struct EdsRequest
{
    QString sourceUid; ///< empty: the desktop's default address book
    QString dataFolder; ///< folder for journals, history and backups
    std::chrono::milliseconds callLimit{25'000}; ///< for one request to the daemon
};

struct EdsBookInfo
{
    QString uid;
    QString name; ///< for the user
    bool isDefault = false;
};

/// Returned by the module's one function, kEdsModuleFunction.
struct EdsModule
{
    const char *version; ///< of the program it was built with
    bool (*isOffered)(); ///< whether the session bus could start the daemon; does not start it
    Result<std::unique_ptr<AddressBookStore>> (*open)(const EdsRequest &request);
    Result<std::vector<EdsBookInfo>> (*books)(const EdsRequest &request);
};

using EdsModuleFunction = const EdsModule *(*)();
inline constexpr const char *kEdsModuleFunction = "peoplenookEdsModule";
