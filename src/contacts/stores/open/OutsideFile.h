// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <QByteArray>

#include <limits>

/// Reads a file that the user names, such as cards or a picture. Databases, among them the open address book
/// (@p bookFile, may be empty), its backups and what SQLite keeps beside them, are refused (Invalid) without being
/// opened: closing one of them would drop the locks that this process holds on it.
Result<QByteArray> readOutsideFile(
    const QString &path, const QString &bookFile, qint64 largest = std::numeric_limits<qint64>::max());
