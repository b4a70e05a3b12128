// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "table/fields/Fields.h"

#include <QLatin1StringView>

#include <span>

/// A menu that shows and hides columns of the contact table.
struct ColumnMenu
{
    QLatin1StringView name; ///< for code
    QLatin1StringView title; ///< for the user
    std::span<const FieldInfo> fields; ///< in menu order
};

/// Together they hold every field once.
std::span<const ColumnMenu> allMenusArray();

/// The columns of a fresh contact table, from the left.
std::span<const Field> initialColumns();
