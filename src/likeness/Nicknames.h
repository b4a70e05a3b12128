// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

/// The rows of the table of first names that hold this word form; names of one row may be one person's. Null: none.
const std::vector<int> *nicknameRows(const std::string &form);
/// The word form that a row begins with.
const std::string &headOfNicknameRow(int row);
