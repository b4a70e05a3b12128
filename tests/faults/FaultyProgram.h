// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QStringList>

/// What the n-th call that changes files below a folder meets; faults/FaultShim.cpp says which calls those are.
struct Fault
{
    QByteArray kind; ///< "kill", "torn" (killed amid a write), or the number of an errno, from that call on
    int atCall; ///< from 1; 0: none
};

struct FaultyRun
{
    bool wasReached = false; ///< the program made that many calls
    bool wasKilled = false;
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

/// Runs a program of the build tree, named by its path below it, with a fault for what it does below @p folder.
FaultyRun runWithFault(const QString &program, const QStringList &arguments, const QString &folder, const Fault &fault);

/// For the QTemporaryDir of a test that makes hundreds of address books: in memory where the system has such a place.
/// What a killed process has written stays there as it does on a disk.
QString quickFolder();

/// How many times as long the loops over faults run as in the ordinary test run (PEOPLENOOK_FAULT_ROUNDS); at least 1.
int faultRounds();
