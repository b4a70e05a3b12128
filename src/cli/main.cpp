// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CommandLine.h"
#include "contacts/book/ABAddressBook.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>
#include <string_view>
#include <unistd.h>

namespace {

/// For memory that runs out where nothing can be caught, as on a thread.
[[noreturn]] void endWithALine()
{
    if (const std::exception_ptr thrown = std::current_exception()) {
        try {
            std::rethrow_exception(thrown);
        } catch (const std::bad_alloc &) {
            constexpr std::string_view kLine = "out of memory\n";
            if (::write(STDERR_FILENO, kLine.data(), kLine.size()) >= 0)
                ::_exit(int(ExitStatus::Refused));
        } catch (...) { // a fault of this program
        }
    }
    std::abort();
}

/// Closes the address book and ends without taking its people apart, which are so many pieces of memory that it would
/// take a third of a scan.
[[noreturn]] void end(ExitStatus status)
{
    if (const auto book = ABAddressBook::sharedAddressBook())
        book->close();
    std::_Exit(int(status));
}

} // namespace

int main(int argc, char *argv[])
{
    std::set_terminate(endWithALine);
    const QCoreApplication application(argc, argv);
    std::signal(SIGXFSZ, SIG_IGN); // a file that grows beyond its limit is a write that fails, and reported as such
    std::ios::sync_with_stdio(false);
    Console console{std::cin, std::cout, std::cerr, ::isatty(STDERR_FILENO) == 1, ::isatty(STDIN_FILENO) == 1};
    try {
        end(runCommandLine({argv + 1, argv + argc}, console));
    } catch (const std::bad_alloc &) { // after what was begun has been tidied up
        std::cerr << "out of memory\n";
        return int(ExitStatus::Refused);
    }
}
