// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/PlainLines.h"

#include "contacts/cards/CardTerms.h"
#include "contacts/cards/TextCoding.h"
#include "contacts/model/ABLabels.h"

#include <QCryptographicHash>

#include <algorithm>
#include <cmath>

namespace {

/// What can be said of a name for display, in order; views into the record.
struct DisplayName
{
    std::array<QStringView, 5> pieces;
    std::size_t count = 0;

    void add(const QString *piece)
    {
        if (piece && !piece->isEmpty())
            pieces.at(count++) = *piece;
    }
};

const QString *firstText(const ABMultiValue *value)
{
    return value && value->count() > 0 ? &value->entries().front().text() : nullptr;
}

DisplayName displayName(const PersonRecord &record)
{
    constexpr std::array parts{
        ABProperty::Title, ABProperty::FirstName, ABProperty::MiddleName, ABProperty::LastName, ABProperty::Suffix};
    DisplayName name;
    for (const ABProperty part : parts)
        name.add(record.text(part));
    for (const QString *other : {record.text(ABProperty::Organization), firstText(record.multiValue(ABProperty::Email)),
             firstText(record.multiValue(ABProperty::Phone))}) {
        if (name.count == 0)
            name.add(other);
    }
    return name;
}

template <typename View> bool matches(const DisplayName &name, View text)
{
    for (std::size_t i = 0; i < name.count; ++i) {
        const QStringView piece = name.pieces.at(i);
        if (i > 0) {
            if (!text.startsWith(QLatin1Char(' ')))
                return false;
            text = text.sliced(1);
        }
        if (!text.startsWith(piece))
            return false;
        text = text.sliced(piece.size());
    }
    return text.isEmpty();
}

QString part(const QString *text)
{
    return text ? escaped(*text) : QString();
}

QLatin1StringView lineName(ABProperty property)
{
    switch (property) {
    case ABProperty::JobTitle:
        return QLatin1StringView("TITLE");
    case ABProperty::Nickname:
        return QLatin1StringView("NICKNAME");
    case ABProperty::Note:
        return QLatin1StringView("NOTE");
    case ABProperty::PhoneticFirstName:
        return QLatin1StringView("X-PHONETIC-FIRST-NAME");
    case ABProperty::PhoneticLastName:
        return QLatin1StringView("X-PHONETIC-LAST-NAME");
    case ABProperty::MaidenName:
        return QLatin1StringView("X-MAIDENNAME");
    case ABProperty::Email:
        return QLatin1StringView("EMAIL");
    case ABProperty::Phone:
        return QLatin1StringView("TEL");
    case ABProperty::Urls:
        return QLatin1StringView("URL");
    case ABProperty::RelatedNames:
        return QLatin1StringView("X-ABRELATEDNAMES");
    case ABProperty::Address:
        return QLatin1StringView("ADR");
    case ABProperty::InstantMessage:
        return QLatin1StringView("IMPP");
    case ABProperty::SocialProfile:
        return QLatin1StringView("X-SOCIALPROFILE");
    default:
        return {};
    }
}

/// A line and those that hang on it by their group.
struct Unit
{
    QString params;
    QString value;
    QString label; // spelled out; null for none
    QString countryCode; // null for none
};

QString assembled(QLatin1StringView name, const Unit &unit)
{
    QString line = name % unit.params % u':' % unit.value;
    if (unit.label.isNull() && unit.countryCode.isNull())
        return line;
    QString lines = kUnitGroup % u'.' % line;
    if (!unit.label.isNull())
        lines += u'\n' % kUnitGroup % QLatin1String(".X-ABLabel:") % escaped(unit.label);
    if (!unit.countryCode.isNull())
        lines += u'\n' % kUnitGroup % QLatin1String(".X-ABADR:") % escaped(unit.countryCode);
    return lines;
}

/// @p text as a parameter value of vCard 3.0; null where that cannot hold it.
QString paramText(const QString &text)
{
    const auto breaksOut = [](QChar c) { return c == u'"' || c < u' ' || c == QChar(0x7F); };
    if (text.isEmpty() || std::ranges::any_of(text, breaksOut))
        return {};
    const auto needsQuotes = [](QChar c) { return c == u':' || c == u';' || c == u',' || c.isSpace(); };
    return std::ranges::any_of(text, needsQuotes) ? QString(u'"' % text % u'"') : text;
}

void setLabel(Unit &unit, ABProperty property, const QString &label)
{
    if (label.isNull())
        return;
    const QLatin1StringView types = typesOfLabel(property, label);
    if (types.isEmpty())
        unit.label = label;
    else
        unit.params += QLatin1String(";TYPE=") % types;
}

QString addressValue(const ABDictionary &address)
{
    const auto key = [&address](ABKey wanted) { return part(address.valueForKey(wanted)); };
    return QLatin1String(";;") % key(ABKey::AddressStreet) % u';' % key(ABKey::AddressCity) % u';'
        % key(ABKey::AddressState) % u';' % key(ABKey::AddressZip) % u';' % key(ABKey::AddressCountry);
}

void setAccount(Unit &unit, const ABDictionary &account)
{
    const QString *service = account.valueForKey(ABKey::InstantMessageService);
    const QString *username = account.valueForKey(ABKey::InstantMessageUsername);
    const CardService *known = service ? serviceOfText(*service) : nullptr;
    const QString word = known ? QString(known->word) : service ? paramText(*service) : QString();
    if (!word.isNull())
        unit.params += QLatin1String(";X-SERVICE-TYPE=") % word;
    unit.value = (known ? known->scheme : QLatin1StringView("x-apple")) % u':'
        % (username ? escaped(*username, Escapes::OnlyBackslashAndNewline) : QString());
}

void setProfile(Unit &unit, const ABDictionary &profile)
{
    const QString *service = profile.valueForKey(ABKey::SocialProfileService);
    const QString *username = profile.valueForKey(ABKey::SocialProfileUsername);
    const QString word = service && isNetworkWord(service->toStdString()) ? paramText(*service) : QString();
    const QString user = username ? paramText(*username) : QString();
    if (!word.isNull())
        unit.params += QLatin1String(";TYPE=") % word;
    if (!user.isNull())
        unit.params += QLatin1String(";X-USER=") % user;
    unit.value =
        QLatin1String("x-apple:") % (username ? escaped(*username, Escapes::OnlyBackslashAndNewline) : QString());
}

} // namespace

QString plainName(const PersonRecord &record)
{
    const auto text = [&record](ABProperty property) { return part(record.text(property)); };
    return QLatin1String("N:") % text(ABProperty::LastName) % u';' % text(ABProperty::FirstName) % u';'
        % text(ABProperty::MiddleName) % u';' % text(ABProperty::Title) % u';' % text(ABProperty::Suffix);
}

QString plainFormattedName(const PersonRecord &record)
{
    const DisplayName name = displayName(record);
    QString line = QStringLiteral("FN:");
    for (std::size_t i = 0; i < name.count; ++i) {
        if (i > 0)
            line += u' ';
        line += escaped(name.pieces.at(i));
    }
    return line;
}

bool isFormattedName(const PersonRecord &record, std::string_view formattedName)
{
    const DisplayName name = displayName(record);
    if (isAscii(formattedName) && formattedName.find('\\') == std::string_view::npos)
        return matches(name, QLatin1StringView(formattedName.data(), static_cast<qsizetype>(formattedName.size())));
    return matches(name, QStringView(unescaped(formattedName)));
}

QString plainOrganization(const PersonRecord &record)
{
    const QString organization = part(record.text(ABProperty::Organization));
    const QString department = part(record.text(ABProperty::Department));
    if (organization.isEmpty() && department.isEmpty())
        return {};
    return QLatin1String("ORG:") % organization % (department.isEmpty() ? QString() : u';' + department);
}

QString plainText(ABProperty property, const PersonRecord &record)
{
    const QLatin1StringView name = lineName(property);
    const QString value = name.isEmpty() ? QString() : part(record.text(property));
    return value.isEmpty() ? QString() : QString(name % u':' % value);
}

QString plainBirthday(const PersonRecord &record)
{
    const auto date = record.birthday();
    if (!date)
        return {};
    const QLatin1StringView params(date->year() == kNoYear ? ";X-APPLE-OMIT-YEAR=1604" : "");
    return QLatin1String("BDAY") % params % u':' % date->toString(Qt::ISODate);
}

QString plainCompany(const PersonRecord &record)
{
    return record.flags() == kABShowAsCompany ? QStringLiteral("X-ABShowAs:COMPANY") : QString();
}

QString plainUid(const QString &uid)
{
    return uid.isEmpty() ? QString() : QString(QLatin1String("UID:") % escaped(uid));
}

QString plainPhoto(const PersonRecord &record)
{
    const QByteArray *image = record.imageData();
    if (!image)
        return {};
    const QByteArray digest = QCryptographicHash::hash(*image, QCryptographicHash::Sha1).toHex();
    return QLatin1String("PHOTO:") % QString::fromLatin1(digest);
}

QString plainEntry(ABProperty property, const ABMultiValue::Entry &entry)
{
    Unit unit;
    QString label = entry.label;
    switch (property) {
    case ABProperty::Address:
        unit.value = addressValue(entry.dictionary());
        if (const QString *code = entry.dictionary().valueForKey(ABKey::AddressCountryCode))
            unit.countryCode = *code;
        break;
    case ABProperty::InstantMessage:
        setAccount(unit, entry.dictionary());
        break;
    case ABProperty::SocialProfile:
        setProfile(unit, entry.dictionary());
        if (label == kABHomeLabel) // what a reader assumes
            label = QString();
        break;
    case ABProperty::Urls:
        unit.value = escaped(entry.text(), Escapes::OnlyBackslashAndNewline);
        break;
    default:
        unit.value = escaped(entry.text());
    }
    setLabel(unit, property, label);
    return assembled(lineName(property), unit);
}

std::vector<PlainUnit> plainUnits(const QString &uid, const PersonRecord &record)
{
    std::vector<PlainUnit> units;
    const auto add = [&units](ABProperty property, const QString &lines) {
        if (!lines.isEmpty())
            units.push_back({property, lines});
    };
    add(ABProperty::Uid, plainUid(uid));
    add(ABProperty::FirstName, plainName(record));
    add(ABProperty::Uid, plainFormattedName(record));
    for (const ABPropertyInfo &info : propertiesOfKind(ABPropertyKind::Text)) {
        const bool isOrganization = info.property == ABProperty::Organization;
        add(info.property, isOrganization ? plainOrganization(record) : plainText(info.property, record));
    }
    add(ABProperty::Birthday, plainBirthday(record));
    add(ABProperty::Flags, plainCompany(record));
    for (const ABPropertyInfo &info : allProperties()) {
        const bool isMulti = info.kind == ABPropertyKind::MultiText || info.kind == ABPropertyKind::MultiDictionary;
        const ABMultiValue *value = isMulti ? record.multiValue(info.property) : nullptr;
        if (!value)
            continue;
        for (const auto &entry : value->entries())
            add(info.property, plainEntry(info.property, entry));
    }
    return units;
}
