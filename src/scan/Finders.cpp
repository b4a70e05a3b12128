// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "scan/Finders.h"

#include "base/Job.h"
#include "scan/DuplicateRules.h"
#include "scan/ScanLog.h"

// In the rules of one person an empty text counts as present, and a space is U+0020 only.

namespace {

/// Whether a person's record alone meets a condition.
using Predicate = bool (*)(const PersonRecord &record);
/// Compares people with each other.
using Finder = Findings (*)(People people);

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
bool hasIncompleteName(const PersonRecord &record)
{
    const bool hasFirst = record.text(kABFirstNameProperty);
    const bool hasLast = record.text(kABLastNameProperty);
    return hasFirst != hasLast && record.flags() != kABShowAsCompany;
}

bool hasSpaceInFirstName(const PersonRecord &record)
{
    return record.textOrEmpty(kABFirstNameProperty).contains(u' ');
}

bool hasUnusualTitle(const PersonRecord &record)
{
    const QString *title = record.text(kABTitleProperty);
    return title && !isIn(kAllowedTitles, *title);
}

bool hasUnusualSuffix(const PersonRecord &record)
{
    const QString *suffix = record.text(kABSuffixProperty);
    return suffix && !isIn(kAllowedSuffixes, *suffix);
}

bool hasBlankName(const PersonRecord &record)
{
    return !record.text(kABFirstNameProperty) && !record.text(kABLastNameProperty);
}

template <ABProperty property> bool consistsOfSpaces(const PersonRecord &record)
{
    const QString &text = record.textOrEmpty(property);
    // One line for each space of a text of two or more: by the million in a large address book, hence its own category.
    if (text.size() > 1 && lcScanTrace().isDebugEnabled()) {
        for (qsizetype spaces = text.count(u' '); spaces > 0; --spaces)
            qCDebug(lcScanTrace, "字符是空空格");
    }
    return !text.isEmpty() && std::ranges::all_of(text, [](QChar c) { return c == u' '; });
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

bool hasInvalidCharacters(const PersonRecord &record)
{
    if (std::ranges::any_of(record.entries(kABEmailProperty), isInvalidEmail))
        return true;
    if (!std::ranges::any_of(record.entries(kABPhoneProperty), isInvalidPhone))
        return false;
    qCDebug(lcScan, "电话号码非法");
    return true;
}

template <ABProperty multiValue> bool hasRepeatedValue(const PersonRecord &record)
{
    return repeatsValue(record, multiValue);
}

struct Rule
{
    Condition condition;
    std::variant<Predicate, Finder> search;
};

constexpr std::array kRules{
    Rule{Condition::SingleName, hasIncompleteName},
    Rule{Condition::DupAddress, hasRepeatedValue<kABAddressProperty>},
    Rule{Condition::InvalidChar, hasInvalidCharacters},
    Rule{Condition::SpaceInFirstName, hasSpaceInFirstName},
    Rule{Condition::ShareEmail, sharedEmails},
    Rule{Condition::DuplicateContacts, peopleOfRepeatedName},
    Rule{Condition::EmptyNotes, consistsOfSpaces<kABNoteProperty>},
    Rule{Condition::EmptyNickname, consistsOfSpaces<kABNicknameProperty>},
    Rule{Condition::DupPhone, hasRepeatedValue<kABPhoneProperty>},
    Rule{Condition::DupEmail, hasRepeatedValue<kABEmailProperty>},
    Rule{Condition::UnusualTitle, hasUnusualTitle},
    Rule{Condition::UnusualSuffix, hasUnusualSuffix},
    Rule{Condition::BlankName, hasBlankName},
};
static_assert(coversConditions(kRules, &Rule::condition));

const Rule &ruleOf(Condition condition)
{
    return *std::ranges::find(kRules, condition, &Rule::condition);
}

} // namespace

bool judgesSingleRecords(Condition condition)
{
    return std::holds_alternative<Predicate>(ruleOf(condition).search);
}

Findings find(Condition condition, People people)
{
    if (judgesSingleRecords(condition))
        return findInOnePass({&condition, 1}, people).front();
    return std::get<Finder>(ruleOf(condition).search)(people);
}

std::vector<Findings> findInOnePass(std::span<const Condition> conditions, People people)
{
    std::vector<Predicate> predicates;
    for (const Condition condition : conditions)
        predicates.push_back(std::get<Predicate>(ruleOf(condition).search));
    using Found = std::vector<std::vector<ABPersonPtr>>; // by condition
    const auto judge = [&predicates](People part) {
        Found found(predicates.size());
        for (const auto &[person, record] : part) {
            for (std::size_t i = 0; i < predicates.size(); ++i) {
                if (predicates[i](*record))
                    found[i].push_back(person);
            }
        }
        return found;
    };
    const std::size_t half = people.size() / 2;
    Found rest;
    Job job;
    job.start([&rest, &judge, &people, half] { rest = judge(people.subspan(half)); });
    Found found = judge(people.first(half));
    job.wait();
    for (std::size_t i = 0; i < found.size(); ++i)
        found[i].insert(found[i].end(), rest[i].begin(), rest[i].end());
    return {std::move_iterator(found.begin()), std::move_iterator(found.end())};
}
