// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/ConditionGroups.h"

#include "contacts/model/NameTexts.h"
#include "results/ProblemTexts.h"

#include <algorithm>
#include <array>

namespace {

using View = QLatin1StringView;

const std::array kGroups{
    ConditionGroup{Condition::UnusualSuffix, View("Unusual Suffix"), View("has unusual suffix."),
        OptionGroup::BadSuffix, 75, processBadSuffixContacts, unusualSuffixText},
    ConditionGroup{Condition::UnusualTitle, View("Unusual Title"), View("has unusual title."), OptionGroup::BadTitle,
        75, processUnusualTitleContacts, unusualTitleText},
    ConditionGroup{Condition::SingleName, View("Incomplete name"), View("the name is incomplete"), OptionGroup::OneName,
        32, processOnlyOneNameContacts, incompleteNameText},
    ConditionGroup{Condition::SpaceInFirstName, View("Spacing in first name"), View("has space(s) in the first name"),
        OptionGroup::SpaceInName, 32, processSpaceInFirstNameContacts, spaceInFirstNameText},
    ConditionGroup{Condition::DuplicateContacts, View("Duplicate contacts"), View("appears more than once"),
        OptionGroup::DupContact, 32, processDuplicateContact, duplicateContactText},
    ConditionGroup{Condition::EmptyNotes, View("Note with spacing only"), View("has space(s) in note"),
        OptionGroup::EmptyNotes, 90, processEmptyNotesContacts, emptyNoteText},
    ConditionGroup{Condition::DupEmail, View("Duplicate Email Address"), View("has duplicate email address"),
        OptionGroup::Duplicate, 90, processDuplicateEmailContacts, duplicateEmailText},
    ConditionGroup{Condition::DupPhone, View("Duplicate Phone number"), View("has duplicate phone number"),
        OptionGroup::Duplicate, 90, processDuplicatePhoneContacts, duplicatePhoneText},
    ConditionGroup{Condition::DupAddress, View("Duplicate Address"), View("has duplicate address"),
        OptionGroup::Duplicate, 90, processDuplicateAddresslContacts, duplicateAddressText},
    ConditionGroup{Condition::EmptyNickname, View("Nickname with spacing only"), View("has space(s) in nickname"),
        OptionGroup::EmptyNotes, 90, processEmptyNicknameContacts, emptyNicknameText},
    ConditionGroup{Condition::BlankName, View("Blank Name"), View("has no name."), OptionGroup::BlankName, 75,
        processBlankNameContacts, blankNameText},
    ConditionGroup{Condition::ShareEmail, View("Share Email address"), View("has the same email address with others"),
        OptionGroup::ShareEmail, 0, processShareEmailContacts, sharedEmailText},
    ConditionGroup{Condition::InvalidChar, View("Invalid Characters"), View("exist invalid characters"),
        OptionGroup::InvalidChar, 90, processInvalidCharContacts, invalidCharacterText},
};

} // namespace

std::span<const ConditionGroup> conditionGroups()
{
    return kGroups;
}

const ConditionGroup *conditionGroupNamed(QStringView name)
{
    const auto found =
        std::ranges::find_if(kGroups, [name](const ConditionGroup &group) { return group.name == name; });
    return found == kGroups.end() ? nullptr : &*found;
}

QString displayName(const PersonRecord &record)
{
    return textOrNull(record, kABFirstNameProperty) % QLatin1Char(' ') % textOrNull(record, kABLastNameProperty);
}
