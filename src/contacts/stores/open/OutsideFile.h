// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <QByteArray>

#include <limits>

/// Reads a file named by the user, such as cards or a picture. Devices are refused as Invalid. Databases (including the
/// open address book @p bookFile, which may be empty, its backups and SQLite's companion files) are refused as Invalid
/// without being opened: closing one would drop this process's locks on it.
Result<QByteArray> readOutsideFile(
    const QString &path, const QString &bookFile, qint64 largest = std::numeric_limits<qint64>::max());
