// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/CommandLine.h"
#include "contacts/book/ABAddressBook.h"
#include "support/TestFolder.h"

#include <sstream>

struct CommandRun
{
    int status;
    QString out;
    QString err;
};

/// Runs the command line on buffers, and closes the address book as the end of the program does.
inline CommandRun runCommand(
    const std::vector<std::string> &arguments, const std::string &input = {}, bool isTerminal = false)
{
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream err;
    Console console{in, out, err, isTerminal, isTerminal};
    const ExitStatus status = runCommandLine(arguments, console);
    ABAddressBook::setSharedAddressBook(nullptr);
    return {int(status), QString::fromStdString(out.str()), QString::fromStdString(err.str())};
}

/// A folder of address books for a test of commands.
class CommandFolder : protected TestFolder
{
protected:
    QString path(const char *name) const { return m_folder.path() + u'/' + u(name); }
    std::string file(const char *name) const { return path(name).toStdString(); }
    CommandRun runOn(const char *book, std::vector<std::string> arguments, const std::string &input = {},
        bool isTerminal = false) const
    {
        arguments.insert(arguments.begin(), {"--address-book", file(book)});
        return runCommand(arguments, input, isTerminal);
    }
};
