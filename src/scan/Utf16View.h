// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <string_view>

/// The code units of @p text. Comparing and searching these is inlined; for the short texts of an address book a call
/// into Qt costs more than the work.
inline std::u16string_view utf16View(const QString &text)
{
    return {reinterpret_cast<const char16_t *>(text.utf16()), std::size_t(text.size())};
}
