// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "likeness/PhoneLines.h"

#include "contacts/model/ABLabels.h"

#include <QHash>
#include <QLocale>

#include <phonenumbers/phonenumberutil.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>

namespace {

using i18n::phonenumbers::PhoneNumber;
using i18n::phonenumbers::PhoneNumberUtil;

const PhoneNumberUtil &util()
{
    return *PhoneNumberUtil::GetInstance();
}

/// One number of one contact.
struct Entry
{
    quint32 contact;
    quint32 ending = 0; ///< its last digits; 0: too short to be understood
    const ABMultiValue::Entry *phone;
    QByteArray digits; ///< without 00, and up to where an extension begins
    bool isInternational;
    bool isPlain = true; ///< nothing but digits and what separates them
    QString region{};
    PhoneLine line{};
};

constexpr int kEnding = 7;

Entry entryOf(std::size_t contact, const ABMultiValue::Entry &phone)
{
    const QString &text = phone.text();
    Entry entry{.contact = static_cast<quint32>(contact),
        .phone = &phone,
        .digits = {},
        .isInternational = text.startsWith(QLatin1String("00")) || text.contains(u'+')};
    entry.isPlain = !text.contains(QLatin1String("(0"));
    for (const QChar c : text) {
        const bool isSpecial = c.isLetter() || c == u'#' || c == u';' || c == u',';
        entry.isPlain = entry.isPlain && !isSpecial;
        if (isSpecial && entry.digits.size() >= kEnding)
            break;
        if (c.isDigit())
            entry.digits += static_cast<char>('0' + c.digitValue());
    }
    if (entry.digits.startsWith("00"))
        entry.digits.remove(0, 2);
    if (entry.digits.size() >= kEnding)
        entry.ending = entry.digits.right(kEnding).toUInt() + 1;
    return entry;
}

/// Two capital letters by the names of countries in all languages that Qt knows, and by the codes themselves.
const QHash<QString, QString> &regionsByCountry()
{
    static const QHash<QString, QString> made = [] {
        QHash<QString, QString> regions;
        const auto locales = QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory);
        for (const QLocale &locale : locales) {
            const QString code = locale.name().section(u'_', -1);
            if (code.size() != 2)
                continue;
            for (const QString &name :
                {code, QLocale::territoryToString(locale.territory()), locale.nativeTerritoryName()})
                regions.insert(name.toCaseFolded(), code);
        }
        return regions;
    }();
    return made;
}

QString regionOfAddress(const PersonRecord &record)
{
    for (const auto &entry : record.entries(kABAddressProperty)) {
        for (const ABKey key : {kABAddressCountryCodeKey, kABAddressCountryKey}) {
            const QString *const country = entry.dictionary().valueForKey(key);
            const QString region = country ? regionsByCountry().value(country->trimmed().toCaseFolded()) : QString();
            if (!region.isEmpty())
                return region;
        }
    }
    return {};
}

/// Digits that begin with the code of a country; those codes do not begin like each other.
QString regionOfInternational(const QByteArray &digits)
{
    constexpr int kLongestCode = 3;
    for (int length = 1; length <= kLongestCode; ++length) {
        std::string region;
        util().GetRegionCodeForCountryCode(digits.left(length).toInt(), &region);
        if (region != "ZZ")
            return QString::fromStdString(region);
    }
    return {};
}

/// The country of the contact's other numbers, else of its address.
QString regionOf(const PersonRecord &record)
{
    for (const auto &phone : record.entries(kABPhoneProperty)) {
        const Entry entry = entryOf(0, phone);
        const QString region = entry.isInternational ? regionOfInternational(entry.digits) : QString();
        if (!region.isEmpty())
            return region;
    }
    return regionOfAddress(record);
}

quint64 keyOf(std::string_view digits)
{
    return std::hash<std::string_view>()(digits);
}

PhoneUse useByLabel(const QString &label)
{
    if (label == kABPhoneMobileLabel || label == kABPhoneiPhoneLabel)
        return PhoneUse::Personal;
    const bool isShared = label == kABPhoneHomeLabel || label == kABPhoneWorkLabel || label == kABPhoneMainLabel
        || label == kABPhoneHomeFAXLabel || label == kABPhoneWorkFAXLabel;
    return isShared ? PhoneUse::Shared : PhoneUse::Unknown;
}

/// Unknown: ask the label, as in North America, where a number does not tell.
PhoneUse useOf(const PhoneNumber &number)
{
    switch (util().GetNumberType(number)) {
    case PhoneNumberUtil::MOBILE:
    case PhoneNumberUtil::PERSONAL_NUMBER:
        return PhoneUse::Personal;
    case PhoneNumberUtil::FIXED_LINE:
    case PhoneNumberUtil::TOLL_FREE:
    case PhoneNumberUtil::SHARED_COST:
    case PhoneNumberUtil::PREMIUM_RATE:
    case PhoneNumberUtil::UAN:
        return PhoneUse::Shared;
    default:
        return PhoneUse::Unknown;
    }
}

/// What is said of numbers that end alike, by text and region, since it takes long to find out.
class Understander
{
public:
    /// False: not a number of that region.
    bool understand(Entry &entry, const QString &region)
    {
        const PhoneNumber *const number = parsed(entry, region);
        if (!number)
            return false;
        std::string national;
        util().GetNationalSignificantNumber(*number, &national);
        entry.line.number = keyOf(std::to_string(number->country_code()) + national);
        if (number->has_extension() && !number->extension().empty())
            entry.line.extension = static_cast<quint32>(keyOf(number->extension())) | 1U;
        entry.region = region;
        return true;
    }

    PhoneUse useOfNumber(const Entry &entry)
    {
        const PhoneNumber *const number = parsed(entry, entry.region);
        return number ? useOf(*number) : PhoneUse::Unknown;
    }

private:
    const PhoneNumber *parsed(const Entry &entry, const QString &region)
    {
        const auto [place, isNew] = m_parsed.try_emplace({entry.phone->text(), region});
        if (isNew) {
            std::string text = entry.phone->text().toStdString();
            if (text.starts_with("00"))
                text.replace(0, 2, "+");
            PhoneNumber number;
            if (util().Parse(text, region.isEmpty() ? "ZZ" : region.toStdString(), &number)
                == PhoneNumberUtil::NO_PARSING_ERROR)
                place->second = number;
        }
        return place->second ? &*place->second : nullptr;
    }

    std::map<std::pair<QString, QString>, std::optional<PhoneNumber>> m_parsed;
};

/// Numbers of several contacts that end alike. All others are equal to none and need not be understood.
void understandAll(std::span<Entry> entries, std::span<const PersonSnapshot> people, const QString &userRegion)
{
    Understander numbers;
    std::vector<Entry *> withoutCountry;
    std::set<QString> regions;
    std::set<quint64> known;
    for (Entry &entry : entries) {
        entry.region =
            entry.isInternational ? regionOfInternational(entry.digits) : regionOf(*people[entry.contact].record);
        if (entry.region.isEmpty()) {
            withoutCountry.push_back(&entry);
            continue;
        }
        regions.insert(entry.region);
        if (!entry.isInternational || !entry.isPlain)
            numbers.understand(entry, entry.region);
        known.insert(entry.line.number);
    }
    for (Entry *const entry : withoutCountry) {
        const auto isKnown = [&](const QString &region) {
            return !region.isEmpty() && numbers.understand(*entry, region) && known.contains(entry->line.number);
        };
        if (!isKnown(userRegion) && std::ranges::none_of(regions, isKnown)) {
            numbers.understand(*entry, userRegion);
            entry->region.clear(); // a guess
        }
    }
    // What a number that several contacts have is for.
    const auto number = [](const Entry &entry) { return entry.line.number; };
    std::ranges::stable_sort(entries, {}, number);
    for (auto begin = entries.begin(); begin != entries.end();) {
        const auto end =
            std::find_if(begin, entries.end(), [&](const Entry &e) { return number(e) != number(*begin); });
        const bool isShared = (end - 1)->contact != begin->contact;
        const PhoneUse use = isShared ? numbers.useOfNumber(*begin) : PhoneUse::Unknown;
        for (; begin != end; ++begin) {
            PhoneUse &noted = begin->line.use;
            if (begin->line.extension != 0)
                noted = PhoneUse::Personal;
            else if (use != PhoneUse::Unknown) // where its country is guessed, the label may know better
                noted = noted == PhoneUse::Unknown || noted == use ? use : PhoneUse::Unknown;
        }
    }
}

} // namespace

std::vector<std::vector<PhoneLine>> phoneLines(
    std::span<const PersonSnapshot> people, const QString &region, const LikenessProgress &progress)
{
    std::vector<Entry> entries;
    for (std::size_t contact = 0; contact < people.size(); ++contact) {
        for (const auto &phone : people[contact].record->entries(kABPhoneProperty)) {
            Entry entry = entryOf(contact, phone);
            entry.line = {keyOf(entry.digits.toStdString()), 0, useByLabel(entry.phone->label)};
            if (!entry.digits.isEmpty())
                entries.push_back(std::move(entry));
        }
    }
    std::ranges::stable_sort(entries, {}, &Entry::ending);
    for (auto begin = entries.begin(); begin != entries.end();) {
        const auto end = std::find_if(begin, entries.end(), [&](const Entry &e) { return e.ending != begin->ending; });
        const auto done = static_cast<double>(begin - entries.begin()) / static_cast<double>(entries.size());
        if (!progress(done))
            return {};
        const bool isOfOne = std::all_of(begin, end, [&](const Entry &e) { return e.contact == begin->contact; });
        if (!isOfOne && begin->ending != 0)
            understandAll({begin, end}, people, region);
        begin = end;
    }
    std::vector<std::vector<PhoneLine>> lines(people.size());
    for (const Entry &entry : entries)
        lines[entry.contact].push_back(entry.line);
    return lines;
}
