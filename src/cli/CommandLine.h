// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <istream>
#include <ostream>
#include <string>
#include <vector>

/// The streams that a command talks to; tests give buffers.
struct Console
{
    std::istream &in;
    std::ostream &out; ///< data
    std::ostream &err; ///< everything else
    bool errIsTerminal = false; ///< progress may be shown there
    bool inIsTerminal = false; ///< somebody can be asked there
};

/// The statuses that the program ends with.
enum class ExitStatus {
    Done = 0,
    Refused = 1, ///< in part or as a whole; standard error says what and why
    Usage = 2,
};

/// Runs the program with these arguments (without its name).
ExitStatus runCommandLine(const std::vector<std::string> &arguments, Console &console);
