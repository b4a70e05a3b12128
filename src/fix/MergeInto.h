// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABAddressBook.h"

/// Gives @p result to the first of @p people and removes the others, in one step of the history; the first keeps its
/// uid. Writes at once. On an error nothing is changed: Conflict if somebody else has changed one of them since.
Result<void> mergeInto(ABAddressBook &book, const std::vector<StoredRecord> &people, PersonRecord result);
