// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/book/AddressBookStore.h"

#include <chrono>
#include <memory>
#include <vector>

// What a program sees of the module that knows Evolution Data Server. Programs load it only when they need it, so that
// they start where libebook is not installed. Program and module come from one build; EdsModule::version tells.

/// Which address book, and how.
struct EdsRequest
{
    QString sourceUid; ///< empty: the desktop's default address book
    QString dataFolder; ///< where journals, history and backups go
    std::chrono::milliseconds callLimit{25'000}; ///< for one request to the daemon
};

struct EdsBookInfo
{
    QString uid;
    QString name; ///< as its owner calls it
    bool isDefault = false;
};

/// What the module's one function, kEdsModuleFunction, returns.
struct EdsModule
{
    const char *version; ///< of the program it was built with
    bool (*isOffered)(); ///< whether the session's bus could start the daemon; starts nothing
    Result<std::unique_ptr<AddressBookStore>> (*open)(const EdsRequest &request);
    Result<std::vector<EdsBookInfo>> (*books)(const EdsRequest &request);
};

using EdsModuleFunction = const EdsModule *(*)();
inline constexpr const char *kEdsModuleFunction = "peoplenookEdsModule";
