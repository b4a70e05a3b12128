// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

/// A call that changed files, as faults/FaultShim.cpp writes it down; its path and its data follow.
struct DiskCall
{
    enum class Kind : std::uint8_t {
        Write, ///< the data at the offset
        Cut, ///< to the offset
        Sync, ///< of a file or a folder
        Make, ///< a new file
        MakeFolder,
        Link,
        Rename, ///< of the path that is the data
        Unlink,
        Tell, ///< on standard output
    };
    Kind kind;
    std::uint64_t file; ///< inode
    std::int64_t offset;
    std::uint64_t pathSize;
    std::uint64_t dataSize;
};
