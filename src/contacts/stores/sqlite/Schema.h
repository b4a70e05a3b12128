// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <string>

/// The tables of an address book file; docs/store.md tells what they mean.
namespace Schema {

/// Kept in the file's header (PRAGMA application_id, user_version) to know our files and their age by.
inline constexpr quint32 kApplicationId = 0x50504E6B;
inline constexpr int kVersion = 2;

/// The statements that make the tables of an empty address book.
std::string tables();
/// Those that make the views by which a person with a shell reads them; the program never does.
std::string views();
/// The one that marks the file as of this version.
std::string versionMark();

} // namespace Schema
