// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

/// The rows of the table of first names with this word form; one person may use all names of a row. Null: none.
const std::vector<int> *nicknameRows(const std::string &form);
/// The first word form of a row.
const std::string &headOfNicknameRow(int row);
