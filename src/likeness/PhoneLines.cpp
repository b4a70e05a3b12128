// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "likeness/PhoneLines.h"

#include "contacts/model/ABLabels.h"

#include <QHash>
#include <QLocale>

#include <phonenumbers/phonenumberutil.h>

#include <algorithm>
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
    std::size_t contact;
    const ABMultiValue::Entry *phone;
    QString digits; ///< of an international number without 00, and none of an extension
    bool isInternational;
    bool isPlain; ///< nothing but digits and what separates them
};

constexpr qsizetype kEnding = 7;

/// ASCII digits up to where an extension begins.
QString digitsOf(const QString &text)
{
    QString digits;
    for (const QChar c : text) {
        if (c.isDigit())
            digits += QChar(u'0' + c.digitValue());
        else if (digits.size() >= kEnding && (c.isLetter() || c == u'#' || c == u';' || c == u','))
            break;
    }
    return digits;
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
    const ABMultiValue *const addresses = record.multiValue(kABAddressProperty);
    if (!addresses)
        return {};
    for (const auto &entry : addresses->entries()) {
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
QString regionOfInternational(QStringView digits)
{
    constexpr qsizetype kLongestCode = 3;
    for (qsizetype length = 1; length <= std::min(kLongestCode, digits.size()); ++length) {
        std::string region;
        util().GetRegionCodeForCountryCode(digits.left(length).toInt(), &region);
        if (region != "ZZ")
            return QString::fromStdString(region);
    }
    return {};
}

bool parse(const Entry &entry, const QString &region, PhoneNumber &number)
{
    std::string text = entry.phone->text().toStdString();
    if (text.starts_with("00"))
        text.replace(0, 2, "+");
    return util().Parse(text, region.isEmpty() ? "ZZ" : region.toStdString(), &number)
        == PhoneNumberUtil::NO_PARSING_ERROR;
}

quint64 keyOf(const std::string &digits)
{
    return std::hash<std::string>()(digits);
}

quint64 keyOf(const PhoneNumber &number)
{
    std::string national;
    util().GetNationalSignificantNumber(number, &national);
    return keyOf(std::to_string(number.country_code()) + national);
}

PhoneUse useByLabel(const QString &label)
{
    if (label == kABPhoneMobileLabel || label == kABPhoneiPhoneLabel)
        return PhoneUse::Personal;
    const bool isShared = label == kABPhoneHomeLabel || label == kABPhoneWorkLabel || label == kABPhoneMainLabel
        || label == kABPhoneHomeFAXLabel || label == kABPhoneWorkFAXLabel;
    return isShared ? PhoneUse::Shared : PhoneUse::Unknown;
}

PhoneLine lineOf(const PhoneNumber &number, const QString &label)
{
    PhoneLine line{keyOf(number), 0, useByLabel(label)};
    if (number.has_extension() && !number.extension().empty()) {
        line.extension = static_cast<quint32>(std::hash<std::string>()(number.extension())) | 1U;
        line.use = PhoneUse::Personal;
        return line;
    }
    switch (util().GetNumberType(number)) {
    case PhoneNumberUtil::MOBILE: // whatever the label says
    case PhoneNumberUtil::PERSONAL_NUMBER:
        line.use = PhoneUse::Personal;
        break;
    case PhoneNumberUtil::FIXED_LINE:
    case PhoneNumberUtil::TOLL_FREE:
    case PhoneNumberUtil::SHARED_COST:
    case PhoneNumberUtil::PREMIUM_RATE:
    case PhoneNumberUtil::UAN:
        line.use = PhoneUse::Shared;
        break;
    default: // in North America a number does not tell
        break;
    }
    return line;
}

class Numbering
{
public:
    Numbering(std::span<const PersonSnapshot> people, const QString &region) : m_people(people), m_region(region)
    {
        for (std::size_t contact = 0; contact < people.size(); ++contact) {
            const ABMultiValue *const phones = people[contact].record->multiValue(kABPhoneProperty);
            if (!phones)
                continue;
            for (const auto &phone : phones->entries()) {
                if (Entry entry = entryOf(contact, phone); !entry.digits.isEmpty())
                    m_entries.push_back(std::move(entry));
            }
        }
    }

    std::vector<std::vector<PhoneLine>> lines()
    {
        std::vector<std::vector<PhoneLine>> lines(m_people.size());
        const auto ending = [](const Entry &entry) { return QStringView(entry.digits).right(kEnding); };
        std::ranges::stable_sort(m_entries, {}, ending);
        for (auto begin = m_entries.begin(); begin != m_entries.end();) {
            const auto end = std::find_if(
                begin, m_entries.end(), [&](const Entry &entry) { return ending(entry) != ending(*begin); });
            addEqualEndings({begin, end}, lines);
            begin = end;
        }
        return lines;
    }

private:
    static Entry entryOf(std::size_t contact, const ABMultiValue::Entry &phone)
    {
        const QString &text = phone.text();
        Entry entry{contact, &phone, digitsOf(text), true, true};
        if (text.startsWith(QLatin1String("00")))
            entry.digits.remove(0, 2);
        else
            entry.isInternational = text.contains(u'+');
        entry.isPlain = std::ranges::none_of(
            text, [](QChar c) { return c.isLetter() || c == u'(' || c == u'#' || c == u';' || c == u','; });
        return entry;
    }

    /// Numbers that nobody else's ends like are equal to none, and need not be understood.
    void addEqualEndings(std::span<const Entry> entries, std::vector<std::vector<PhoneLine>> &lines) const
    {
        const bool isOnlyOne =
            std::ranges::all_of(entries, [&](const Entry &entry) { return entry.contact == entries.front().contact; });
        std::set<QString> regions;
        std::set<quint64> internationals;
        for (const Entry &entry : entries) {
            if (!isOnlyOne && entry.isInternational) {
                regions.insert(regionOfInternational(entry.digits));
                internationals.insert(keyOf(entry.digits.toStdString()));
            }
        }
        // What a number is for takes long to ask, and of one that many have it is known.
        constexpr std::size_t kFew = 8;
        for (const Entry &entry : entries) {
            const bool isKnown = isOnlyOne || entry.digits.size() < kEnding
                || (entry.isInternational && entry.isPlain && entries.size() > kFew);
            PhoneNumber number;
            const bool isUnderstood = !isKnown
                && (entry.isInternational ? parse(entry, {}, number)
                                          : parseNational(entry, regions, internationals, number));
            const QString &label = entry.phone->label;
            lines[entry.contact].push_back(isUnderstood
                    ? lineOf(number, label)
                    : PhoneLine{keyOf(entry.digits.toStdString()), 0, useByLabel(label)});
        }
    }

    bool parseNational(const Entry &entry, const std::set<QString> &regions, const std::set<quint64> &internationals,
        PhoneNumber &number) const
    {
        if (const QString region = ownRegion(entry.contact); !region.isEmpty())
            return parse(entry, region, number);
        for (const QString &region : regions) {
            if (parse(entry, region, number) && internationals.contains(keyOf(number)))
                return true;
        }
        return !m_region.isEmpty() && parse(entry, m_region, number);
    }

    QString ownRegion(std::size_t contact) const
    {
        const PersonRecord &record = *m_people[contact].record;
        for (const auto &phone : record.multiValue(kABPhoneProperty)->entries()) {
            const Entry entry = entryOf(contact, phone);
            const QString region = entry.isInternational ? regionOfInternational(entry.digits) : QString();
            if (!region.isEmpty())
                return region;
        }
        return regionOfAddress(record);
    }

    std::span<const PersonSnapshot> m_people;
    QString m_region;
    std::vector<Entry> m_entries;
};

} // namespace

std::vector<std::vector<PhoneLine>> phoneLines(std::span<const PersonSnapshot> people, const QString &region)
{
    return Numbering(people, region).lines();
}
