// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLatin1StringView>
#include <QString>

#include <algorithm>
#include <array>
#include <optional>
#include <span>

// Handlers identify options by these titles.
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

/// The sets of repair options for the user. Some conditions share one.
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

inline constexpr std::array kOneName{kConvertToCompany, kUseQuestionMarks, kDeleteThisContact};
inline constexpr std::array kDupContact{kMergeContacts, kDeleteDuplicateContacts, kDeleteThisContact};
inline constexpr std::array kSpaceInName{kRemoveTheSpace, kHyphenateFirstName, kDeleteThisContact};
inline constexpr std::array kEmptyNotes{kDeleteBlankProperty};
inline constexpr std::array kShareEmail{kRemoveEmail, kDeleteDuplicateContacts, kMergeContacts, kDeleteThisContact};
inline constexpr std::array kDuplicate{kDeleteDuplicateProperty};
inline constexpr std::array kBadSuffix{kRemoveTheSuffix, kDeleteThisContact};
inline constexpr std::array kBadTitle{kRemoveTheTitle, kDeleteThisContact};
inline constexpr std::array kInvalidChar{kEditInContacts};
inline constexpr std::array kBlankName{kEditInContacts, kDeleteThisContact};

struct OptionGroupInfo
{
    OptionGroup group;
    QLatin1StringView outlet; ///< the group's name in a window's layout
    std::span<const QLatin1StringView> titles; ///< in the order offered; the first is the default
};

/// In the order of OptionGroup.
inline constexpr std::array kOptionGroups{
    OptionGroupInfo{OptionGroup::OneName, QLatin1StringView("matrixOneName"), kOneName},
    OptionGroupInfo{OptionGroup::DupContact, QLatin1StringView("matrixDupContact"), kDupContact},
    OptionGroupInfo{OptionGroup::SpaceInName, QLatin1StringView("matrixSpaceInName"), kSpaceInName},
    OptionGroupInfo{OptionGroup::EmptyNotes, QLatin1StringView("matrixEmptyNotes"), kEmptyNotes},
    OptionGroupInfo{OptionGroup::ShareEmail, QLatin1StringView("matrixShareEmail"), kShareEmail},
    OptionGroupInfo{OptionGroup::Duplicate, QLatin1StringView("duplicateMatrix"), kDuplicate},
    OptionGroupInfo{OptionGroup::BadSuffix, QLatin1StringView("matrixBadSuffix"), kBadSuffix},
    OptionGroupInfo{OptionGroup::BadTitle, QLatin1StringView("matrixBadTitle"), kBadTitle},
    OptionGroupInfo{OptionGroup::InvalidChar, QLatin1StringView("matrixInvalidChar"), kInvalidChar},
    OptionGroupInfo{OptionGroup::BlankName, QLatin1StringView("matrixBlankName"), kBlankName},
};

constexpr const OptionGroupInfo &optionGroupInfo(OptionGroup group)
{
    return kOptionGroups.at(static_cast<std::size_t>(group));
}
static_assert(std::ranges::all_of(kOptionGroups, [](const auto &row) { return &optionGroupInfo(row.group) == &row; }));

/// The index of @p title in the group; nothing for other texts.
inline std::optional<std::size_t> optionTitled(OptionGroup group, QStringView title)
{
    const auto titles = optionGroupInfo(group).titles;
    const auto found = std::ranges::find_if(titles, [title](QLatin1StringView offered) { return offered == title; });
    return found == titles.end() ? std::nullopt : std::optional(std::size_t(found - titles.begin()));
}
