// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <istream>
#include <ostream>
#include <string>
#include <vector>

/// A command's streams; tests pass buffers.
struct Console
{
    std::istream &in;
    std::ostream &out; ///< data
    std::ostream &err; ///< everything else
    bool errIsTerminal = false; ///< progress may be shown on it
    bool inIsTerminal = false; ///< the user can be asked
};

/// The program's exit statuses.
enum class ExitStatus {
    Done = 0,
    Refused = 1, ///< completely or in part; standard error says what and why
    Usage = 2,
};

/// Runs the program with these arguments, without its name.
ExitStatus runCommandLine(const std::vector<std::string> &arguments, Console &console);
