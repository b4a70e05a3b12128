// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "scan/Finders.h"

#include "scan/DuplicateRules.h"
#include "scan/ScanLog.h"

// In the rules of one person an empty text counts as present, and a space is U+0020 only.

namespace {

// "2lt2ND" and "Gerneral" are in the list as they stand, so "2lt", "2ND" and "General" are unusual.
constexpr std::array<QStringView, 77> kAllowedTitles{u"1LT", u"1lt", u"1ST", u"1st", u"2LT", u"2lt2ND", u"2nd", u"3RD",
    u"3rd", u"Adm", u"adm", u"Admiral", u"admiral", u"Cardinal", u"cardinal", u"Capt", u"capt", u"Captain", u"captain",
    u"CDR", u"cdr", u"Chief", u"chief", u"Col", u"col", u"Colonel", u"colonel", u"Count", u"count", u"Cpt", u"cpt",
    u"Doctor", u"doctor", u"Dr", u"dr", u"Gen", u"gen", u"Gerneral", u"gerneral", u"LCDR", u"lcdr", u"Lord", u"lord",
    u"Lt", u"lt", u"LTG", u"ltg", u"LTJG", u"ltjg", u"Maj", u"maj", u"Major", u"major", u"MG", u"mg", u"Mr", u"mr",
    u"Mrs", u"mrs", u"Ms", u"ms", u"Pastor", u"pastor", u"Prof", u"prof", u"Professor", u"professor", u"Rep", u"rep",
    u"Reverend", u"reverend", u"Sen", u"sen", u"Senator", u"senator", u"Sir", u"sir"};

constexpr std::array<QStringView, 40> kAllowedSuffixes{u"2nd", u"2ND", u"3rd", u"3RD", u"4th", u"4TH", u"5th", u"5TH",
    u"6th", u"6TH", u"BA", u"ba", u"DDS", u"dds", u"ESQ", u"esq", u"I", u"II", u"III", u"IV", u"IX", u"Jr", u"jr",
    u"Junior", u"junior", u"MA", u"ma", u"MD", u"md", u"MS", u"ms", u"PhD", u"phd", u"Sr", u"sr", u"V", u"VI", u"VII",
    u"VIII", u"X"};

bool isIn(std::span<const QStringView> list, const QString &text)
{
    return std::ranges::find(list, QStringView(text)) != list.end();
}

/// A company is told by its whole flags value.
Findings peopleWithIncompleteName(People people)
{
    return peopleWhere(people, [](const PersonRecord &record) {
        const bool hasFirst = record.text(kABFirstNameProperty);
        const bool hasLast = record.text(kABLastNameProperty);
        return hasFirst != hasLast && record.flags() != kABShowAsCompany;
    });
}

Findings peopleWithSpaceInFirstName(People people)
{
    return peopleWhere(people, [](const PersonRecord &record) {
        const QString *name = record.text(kABFirstNameProperty);
        return name && name->contains(u' ');
    });
}

Findings peopleWithUnusualTitle(People people)
{
    return peopleWhere(people, [](const PersonRecord &record) {
        const QString *title = record.text(kABTitleProperty);
        return title && !isIn(kAllowedTitles, *title);
    });
}

Findings peopleWithUnusualSuffix(People people)
{
    return peopleWhere(people, [](const PersonRecord &record) {
        const QString *suffix = record.text(kABSuffixProperty);
        return suffix && !isIn(kAllowedSuffixes, *suffix);
    });
}

Findings peopleWithBlankName(People people)
{
    return peopleWhere(people, [](const PersonRecord &record) {
        return !record.text(kABFirstNameProperty) && !record.text(kABLastNameProperty);
    });
}

bool consistsOfSpaces(const QString &text)
{
    // One line for each space of a text of two or more: by the million in a large address book, hence its own category.
    if (text.size() > 1 && lcScanTrace().isDebugEnabled()) {
        for (qsizetype spaces = text.count(u' '); spaces > 0; --spaces)
            qCDebug(lcScanTrace, "字符是空空格");
    }
    return !text.isEmpty() && std::ranges::all_of(text, [](QChar c) { return c == u' '; });
}

Findings peopleWithTextOfSpaces(People people, ABProperty property)
{
    return peopleWhere(people, [property](const PersonRecord &record) {
        const QString *text = record.text(property);
        return text && consistsOfSpaces(*text);
    });
}

bool isAsciiLetter(QChar c)
{
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

/// Without "@" or ".com", compared exactly: an address in ".org" is invalid.
bool isInvalidEmail(const ABMultiValue::Entry &email)
{
    return !email.text().contains(u'@') || !email.text().contains(QLatin1StringView(".com"));
}

bool isInvalidPhone(const ABMultiValue::Entry &phone)
{
    return std::ranges::any_of(phone.text(), isAsciiLetter);
}

std::span<const ABMultiValue::Entry> entriesOf(const PersonRecord &record, ABProperty property)
{
    const ABMultiValue *values = record.multiValue(property);
    return values ? values->entries() : std::span<const ABMultiValue::Entry>();
}

bool hasInvalidEmail(const PersonRecord &record)
{
    return std::ranges::any_of(entriesOf(record, kABEmailProperty), isInvalidEmail);
}

bool hasInvalidPhone(const PersonRecord &record)
{
    return std::ranges::any_of(entriesOf(record, kABPhoneProperty), isInvalidPhone);
}

Findings peopleWithNoteOfSpaces(People people)
{
    return peopleWithTextOfSpaces(people, kABNoteProperty);
}

Findings peopleWithNicknameOfSpaces(People people)
{
    return peopleWithTextOfSpaces(people, kABNicknameProperty);
}

Findings peopleWithInvalidCharacters(People people)
{
    return peopleWhere(people, [](const PersonRecord &record) {
        if (hasInvalidEmail(record))
            return true;
        if (!hasInvalidPhone(record))
            return false;
        qCDebug(lcScan, "电话号码非法");
        return true;
    });
}

struct FinderRow
{
    Condition condition;
    Finder find;
};

template <ABProperty property> Findings repeatedValues(People people)
{
    return peopleWithRepeatedValue(people, property);
}

constexpr std::array kFinders{
    FinderRow{Condition::SingleName, peopleWithIncompleteName},
    FinderRow{Condition::DupAddress, repeatedValues<kABAddressProperty>},
    FinderRow{Condition::InvalidChar, peopleWithInvalidCharacters},
    FinderRow{Condition::SpaceInFirstName, peopleWithSpaceInFirstName},
    FinderRow{Condition::ShareEmail, sharedEmails},
    FinderRow{Condition::DuplicateContacts, peopleOfRepeatedName},
    FinderRow{Condition::EmptyNotes, peopleWithNoteOfSpaces},
    FinderRow{Condition::EmptyNickname, peopleWithNicknameOfSpaces},
    FinderRow{Condition::DupPhone, repeatedValues<kABPhoneProperty>},
    FinderRow{Condition::DupEmail, repeatedValues<kABEmailProperty>},
    FinderRow{Condition::UnusualTitle, peopleWithUnusualTitle},
    FinderRow{Condition::UnusualSuffix, peopleWithUnusualSuffix},
    FinderRow{Condition::BlankName, peopleWithBlankName},
};
static_assert(coversConditions(kFinders, &FinderRow::condition));

} // namespace

Findings find(Condition condition, People people)
{
    return std::ranges::find(kFinders, condition, &FinderRow::condition)->find(people);
}
