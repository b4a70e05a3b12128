// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLatin1StringView>
#include <QString>

#include <optional>
#include <span>

// Handlers tell options by their titles, so each is spelled once, here.
inline constexpr QLatin1StringView kConvertToCompany{"Convert to a company contact"};
inline constexpr QLatin1StringView kUseQuestionMarks{"Use \"???\" instead of the empty name"};
inline constexpr QLatin1StringView kDeleteThisContact{"Delete this contact"};
inline constexpr QLatin1StringView kMergeContacts{"Merge contacts"};
inline constexpr QLatin1StringView kDeleteDuplicateContacts{"Delete the duplicate contact(s)"};
inline constexpr QLatin1StringView kRemoveTheSpace{"Remove the space"};
inline constexpr QLatin1StringView kHyphenateFirstName{"Hyphenate the first name"};
inline constexpr QLatin1StringView kDeleteBlankProperty{"Delete the blank property"};
inline constexpr QLatin1StringView kRemoveEmail{"Remove the email from this contact"};
inline constexpr QLatin1StringView kDeleteDuplicateProperty{"Delete the duplicate property"};
inline constexpr QLatin1StringView kRemoveTheSuffix{"Remove the suffix"};
inline constexpr QLatin1StringView kRemoveTheTitle{"Remove the title"};
inline constexpr QLatin1StringView kEditInContacts{"Edit in Contacts"};

/// The sets of options that the user picks a repair from. Some conditions share one.
enum class OptionGroup : quint8 {
    OneName,
    DupContact,
    SpaceInName,
    EmptyNotes,
    ShareEmail,
    Duplicate,
    BadSuffix,
    BadTitle,
    InvalidChar,
    BlankName,
};
inline constexpr std::size_t kOptionGroupCount = 10;

struct OptionGroupInfo
{
    OptionGroup group;
    QLatin1StringView outlet; ///< what the group is called in a window's layout
    std::span<const QLatin1StringView> titles; ///< in the order in which they are offered; the first is the default
};

/// In the order of OptionGroup.
std::span<const OptionGroupInfo> allOptionGroups();
const OptionGroupInfo &optionGroupInfo(OptionGroup group);
/// The place of @p title among the group's titles; nothing for any other text.
std::optional<std::size_t> optionTitled(OptionGroup group, QStringView title);
