// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QJsonArray>
#include <QStringList>

/// What a program that is not ours made of a file.
struct OtherReading
{
    bool installed = false;
    QByteArray output; ///< of standard output; where the program failed, what it complained of

    /// The output as JSON, a value a line.
    QJsonArray lines() const;
};

/// Runs a program of the system, or a script of tests/tools where @p program ends in .py.
OtherReading readBy(const QString &program, const QStringList &arguments);

/// In a test function: skips it where the program is missing.
#define SKIP_WITHOUT(reading)                                                                                          \
    if (!(reading).installed)                                                                                          \
    QSKIP("the other reader is not installed")
