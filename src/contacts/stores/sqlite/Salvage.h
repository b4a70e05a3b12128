// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/model/PersonRecord.h"

#include <vector>

/// What can still be read of an address book file.
struct Salvaged
{
    std::vector<StoredRecord> people; ///< in the order of adding
    qint64 incomplete = 0; ///< how many of them lack something, or have no digest that proves them whole
    qint64 lost = 0; ///< people of whom something in the file speaks and who are not among these; at least
};

/// Reads person by person past what is damaged; the file is only read, and its copy is what SQLite sees.
/// Invalid: nobody could be read.
Result<Salvaged> salvagePeople(const QString &path);
