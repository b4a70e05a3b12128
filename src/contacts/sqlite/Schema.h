// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/record/ABProperties.h"

#include <string>
#include <vector>

/// The tables of an address book file; docs/store.md tells what they mean.
namespace Schema {

/// Kept in the file's header (PRAGMA application_id, user_version) to know our files and their age by.
inline constexpr quint32 kApplicationId = 0x50504E6B;
inline constexpr int kVersion = 1;

/// All statements that make an empty address book.
std::string creation();

/// What a file of the earlier layout of version 1, without causes in its history, has to get.
std::string additionOfCauses();

std::string tableOf(ABProperty multiValue);
/// The columns that hold an entry's value: "value", or the names of its dictionary's keys.
std::vector<std::string> valueColumnsOf(ABProperty multiValue);
/// The columns of `person` that hold properties, in the order of ABProperty.
std::vector<std::string> personColumns();
/// All properties with a table of their own, in the order of ABProperty.
std::vector<ABProperty> multiValues();

std::string join(const std::vector<std::string> &words, const std::string &separator);

} // namespace Schema
