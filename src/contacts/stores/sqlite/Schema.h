// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <string>

/// The tables of an address book file, described in docs/store.md.
namespace Schema {

/// In the file's header (PRAGMA application_id, user_version), to recognise our files and their version.
inline constexpr quint32 kApplicationId = 0x50504E6B;
inline constexpr int kVersion = 2;

/// The statements that create the tables of an empty address book.
std::string tables();
/// Those that create the views for reading by hand; the program does not use them.
std::string views();
/// The statement that marks the file as of this version.
std::string versionMark();

} // namespace Schema
