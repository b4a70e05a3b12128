// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "table/fields/Fields.h"

#include <QLatin1StringView>

#include <span>
#include <vector>

/// One of the menus in which the user chooses what the contact table shows.
struct ColumnMenu
{
    QLatin1StringView name; ///< by which code finds it
    QLatin1StringView title; ///< for the user
    std::vector<Field> fields; ///< in the order of the menu's items
};

/// All of them; together they hold every field once.
std::span<const ColumnMenu> allMenusArray();

/// What a fresh contact table shows, from the left.
std::span<const Field> initialColumns();
