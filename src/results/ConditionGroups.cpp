// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/ConditionGroups.h"

#include "contacts/model/NameTexts.h"
#include "fix/EmailSlots.h"

namespace {

template <ABProperty property> QString textOf(const Finding &finding)
{
    return textOrNull(*finding.person->record(), property);
}

/// Names the others who hold the address, without those who have no name.
QString sharedEmailText(const Finding &finding)
{
    const EmailSlots emails(*finding.person->record());
    const QString &address = emails.ofLabel(finding.duplicateEmailType);
    QString text = QStringLiteral(" This contact has the same email address (\"")
        % (address.isNull() ? QStringLiteral("(null)") : address) % QStringLiteral("\") as ");
    const auto &others = finding.duplicateEmailArray;
    for (qsizetype i = 0; i < others.size(); ++i) {
        const PersonRecordPtr record = others[i]->record();
        if (!record->text(kABFirstNameProperty) && !record->text(kABLastNameProperty))
            continue;
        text += presentNames(*record);
        if (i + 1 < others.size())
            text += QLatin1Char(',');
    }
    return text;
}

using View = QLatin1StringView;

constexpr std::array kGroups{
    ConditionGroup{Condition::UnusualSuffix, View("Unusual Suffix"), View("has unusual suffix."),
        OptionGroup::BadSuffix, 75,
        u"\"%1\" isn't an allowed suffix which is showed in the Preferences. Syncing unusual suffixes can cause names "
        "to get mangled",
        textOf<kABSuffixProperty>},
    ConditionGroup{Condition::UnusualTitle, View("Unusual Title"), View("has unusual title."), OptionGroup::BadTitle,
        75,
        u"\"%1\" isn't an allowed title which is showed in the Preference. Syncing unusual titles can cause names to "
        "get mangled.",
        textOf<kABTitleProperty>},
    ConditionGroup{Condition::SingleName, View("Incomplete name"), View("the name is incomplete"), OptionGroup::OneName,
        32,
        u"This is not a full name which means first or last name is missing or blank. In most cases, single-name "
        "contacts that aren't a single person should be converted to a company contact."},
    ConditionGroup{Condition::SpaceInFirstName, View("Spacing in first name"), View("has space(s) in the first name"),
        OptionGroup::SpaceInName, 32,
        u"This contact has space character(s) in the first name. In some cases these names can become transposed after "
        "syncing with Google."},
    ConditionGroup{Condition::DuplicateContacts, View("Duplicate contacts"), View("appears more than once"),
        OptionGroup::DupContact, 32, u"This contact appears more than once in Contacts"},
    ConditionGroup{Condition::EmptyNotes, View("Note with spacing only"), View("has space(s) in note"),
        OptionGroup::EmptyNotes, 90,
        u"The note of this contact has space character(s). The notes field should probably be deleted."},
    ConditionGroup{Condition::DupEmail, View("Duplicate Email Address"), View("has duplicate email address"),
        OptionGroup::Duplicate, 90, u"This contact has duplicated email address"},
    ConditionGroup{Condition::DupPhone, View("Duplicate Phone number"), View("has duplicate phone number"),
        OptionGroup::Duplicate, 90, u"This contact has duplicated phone number"},
    ConditionGroup{Condition::DupAddress, View("Duplicate Address"), View("has duplicate address"),
        OptionGroup::Duplicate, 90, u"This contact has duplicated address"},
    ConditionGroup{Condition::EmptyNickname, View("Nickname with spacing only"), View("has space(s) in nickname"),
        OptionGroup::EmptyNotes, 90,
        u"The nickname of this contact has space character(s). The nickname field might show up as \u201C\u201D on "
        u"some "
        "devices."},
    ConditionGroup{Condition::BlankName, View("Blank Name"), View("has no name."), OptionGroup::BlankName, 75,
        u"This contact has no name or the name is empty. This contact might not show up or sync correctly."},
    ConditionGroup{Condition::ShareEmail, View("Share Email address"), View("has the same email address with others"),
        OptionGroup::ShareEmail, 0, u"%1", sharedEmailText},
    ConditionGroup{Condition::InvalidChar, View("Invalid Characters"), View("exist invalid characters"),
        OptionGroup::InvalidChar, 90, u"This contact contains invalid character."},
};
static_assert(coversConditions(kGroups, &ConditionGroup::condition));

} // namespace

std::span<const ConditionGroup> conditionGroups()
{
    return kGroups;
}

const ConditionGroup &conditionGroup(Condition condition)
{
    return *std::ranges::find(kGroups, condition, &ConditionGroup::condition);
}

const ConditionGroup *conditionGroupNamed(QStringView name)
{
    const auto found =
        std::ranges::find_if(kGroups, [name](const ConditionGroup &group) { return group.name == name; });
    return found == kGroups.end() ? nullptr : &*found;
}

QString problemText(const Finding &finding)
{
    const ConditionGroup &group = conditionGroup(finding.condition);
    const QString text = group.problem.toString();
    return group.quoted ? text.arg(group.quoted(finding)) : text;
}
