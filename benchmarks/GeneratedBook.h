// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <QString>

#include <vector>

/// The first @p count people of the generator, all with one seed. Made once per count.
const std::vector<StoredRecord> &generatedPeople(qint64 count);

/// The path of an address book file with these people. Made once per count, gone with the program.
QString generatedBook(qint64 count);

/// How much memory the program has allocated now.
double allocatedBytes();
