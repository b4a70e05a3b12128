// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABAddressBook.h"

#include <functional>
#include <span>

/// Who usually has a phone.
enum class PhoneUse : quint8 {
    Personal, ///< a mobile phone, or an extension
    Unknown,
    Shared, ///< the landline of a home or an office
};

/// A phone number in one form, however it was written.
struct PhoneLine
{
    quint64 number; ///< equal for equal numbers, without their extensions
    quint32 extension; ///< 0: none
    PhoneUse use;
};

/// Called with how much is done, from 0 to 1; false cancels.
using LikenessProgress = std::function<bool(double done)>;

/// The phone lines of each of these contacts. A number without country is one of the country of the contact's other
/// numbers, else of its address, else of a number in the book that it would be equal to, else of @p region (two capital
/// letters, or empty). Incomplete if @p progress cancelled.
std::vector<std::vector<PhoneLine>> phoneLines(
    std::span<const PersonSnapshot> people, const QString &region, const LikenessProgress &progress);
