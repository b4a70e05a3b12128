// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/RepairOptions.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array kOneName{kConvertToCompany, kUseQuestionMarks, kDeleteThisContact};
constexpr std::array kDupContact{kMergeContacts, kDeleteDuplicateContacts, kDeleteThisContact};
constexpr std::array kSpaceInName{kRemoveTheSpace, kHyphenateFirstName, kDeleteThisContact};
constexpr std::array kEmptyNotes{kDeleteBlankProperty};
constexpr std::array kShareEmail{kRemoveEmail, kDeleteDuplicateContacts, kMergeContacts, kDeleteThisContact};
constexpr std::array kDuplicate{kDeleteDuplicateProperty};
constexpr std::array kBadSuffix{kRemoveTheSuffix, kDeleteThisContact};
constexpr std::array kBadTitle{kRemoveTheTitle, kDeleteThisContact};
constexpr std::array kInvalidChar{kEditInContacts};
constexpr std::array kBlankName{kEditInContacts, kDeleteThisContact};

constexpr std::array kOptionGroups{
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
static_assert(kOptionGroups.size() == kOptionGroupCount);

} // namespace

std::span<const OptionGroupInfo> allOptionGroups()
{
    return kOptionGroups;
}

const OptionGroupInfo &optionGroupInfo(OptionGroup group)
{
    return kOptionGroups.at(static_cast<std::size_t>(group));
}

std::optional<std::size_t> optionTitled(OptionGroup group, QStringView title)
{
    const auto titles = optionGroupInfo(group).titles;
    const auto found = std::ranges::find_if(titles, [title](QLatin1StringView offered) { return offered == title; });
    return found == titles.end() ? std::nullopt : std::optional(std::size_t(found - titles.begin()));
}
