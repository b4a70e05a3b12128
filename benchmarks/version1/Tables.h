// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The path of a database that holds the people of generatedBook() in tables, as address books of format 1 did. Made
/// once per count, gone with the program.
QString generatedTables(qint64 count);
