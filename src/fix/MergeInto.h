// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABAddressBook.h"

/// Saves @p result as the first of @p people, keeping its uid, and removes the others, in one step of the history. On
/// an error nothing is changed. Conflict: one of them has since been changed.
Result<void> mergeInto(ABAddressBook &book, const std::vector<StoredRecord> &people, PersonRecord result);
