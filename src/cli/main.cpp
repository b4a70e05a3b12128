// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CommandLine.h"

#include <QCoreApplication>

#include <csignal>
#include <iostream>
#include <unistd.h>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    std::signal(SIGXFSZ, SIG_IGN); // a file that grows beyond its limit is a write that fails, and reported as such
    std::ios::sync_with_stdio(false);
    Console console{std::cin, std::cout, std::cerr, ::isatty(STDERR_FILENO) == 1, ::isatty(STDIN_FILENO) == 1};
    return int(runCommandLine({argv + 1, argv + argc}, console));
}
