// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/ExactValues.h"

#include "contacts/cards/CardMap.h"
#include "contacts/cards/RecordJson.h"
#include "contacts/cards/TextCoding.h"

#include <QCryptographicHash>

namespace {

constexpr QLatin1StringView kImage{"image"};

/// The picture counts as one more property here.
std::optional<ABProperty> propertyOf(QStringView name)
{
    return name == kImage ? std::nullopt : propertyNamed(name);
}

void copy(std::optional<ABProperty> property, const CardValues &from, CardValues &to)
{
    if (!property) {
        to.record.setImageData(from.record.imageData() ? *from.record.imageData() : QByteArray());
    } else if (property == kABUIDProperty) {
        to.uid = from.uid;
    } else {
        to.record.removeValue(*property);
        to.record.setValue(*property, from.record.value(*property));
    }
}

bool isSame(std::optional<ABProperty> property, const CardValues &a, const CardValues &b)
{
    if (property == kABUIDProperty)
        return a.uid == b.uid;
    return property ? a.record.value(*property) == b.record.value(*property) : a.record.hasImageOf(b.record);
}

/// The JSON of a record that has no other property.
std::string json(std::optional<ABProperty> property, const CardValues &values)
{
    CardValues only;
    copy(property, values, only);
    return recordToJson(only.uid.isEmpty() ? QString() : only.uid, only.record);
}

std::string sum(std::string_view json)
{
    constexpr qsizetype digits = 16;
    const QByteArrayView bytes(json.data(), static_cast<qsizetype>(json.size()));
    return QCryptographicHash::hash(bytes.toByteArray(), QCryptographicHash::Sha1).toHex().first(digits).toStdString();
}

std::string exactLine(
    QLatin1StringView name, std::optional<ABProperty> property, const CardValues &wanted, const CardValues &read)
{
    return std::string("X-PEOPLENOOK-EXACT;X-PROPERTY=") + name.data() + ";X-SUM=" + sum(json(property, read)) + ':'
        + escaped(textOfUtf8(json(property, wanted)));
}

bool isSayable(const QString &text)
{
    return std::ranges::all_of(text, [](QChar c) { return c >= u' ' || c == u'\n' || c == u'\t'; });
}

/// What a reader cannot take for another value or for none.
bool isSayableValue(const QString &text)
{
    return !text.isEmpty() && isSayable(text);
}

bool isSayableDictionary(ABProperty property, const ABMultiValue::Entry &entry)
{
    const ABDictionary &parts = entry.dictionary();
    const auto isSayablePart = [](const ABDictionary::Entry &part) { return isSayableValue(part.second); };
    if (parts.isEmpty() || !std::ranges::all_of(parts, isSayablePart))
        return false;
    const auto &[firstKey, first] = *parts.begin();
    if (property == kABAddressProperty)
        return firstKey != kABAddressCountryCodeKey;
    if (property == kABInstantMessageProperty)
        return firstKey == kABInstantMessageServiceKey && serviceOfText(first)
            && parts.valueForKey(kABInstantMessageUsernameKey);
    const QString *username = parts.valueForKey(kABSocialProfileUsernameKey);
    const QString *known = socialService(first.toStdString());
    return !entry.label.isNull() && firstKey == kABSocialProfileServiceKey && known && *known == first && username
        && !breaksParam(*username) && !username->contains(u'^');
}

bool isSayableEntry(ABProperty property, const ABMultiValue::Entry &entry)
{
    if (!isSayable(entry.label) || entry.label.contains(u'^'))
        return false;
    const auto *text = std::get_if<QString>(&entry.value);
    if (!text)
        return isSayableDictionary(property, entry);
    return isSayableValue(*text)
        && (property != kABPhoneProperty || !text->startsWith(QLatin1String("tel:"), Qt::CaseInsensitive));
}

bool isSayableProperty(const ABPropertyInfo &info, const PersonRecord &record)
{
    if (!isWritten(areaOf(info.property)))
        return std::holds_alternative<std::monostate>(record.value(info.property));
    switch (info.kind) {
    case ABPropertyKind::Text:
        return !record.text(info.property) || isSayableValue(*record.text(info.property));
    case ABPropertyKind::Integer:
        return !record.flags() || record.flags() == kABShowAsCompany;
    case ABPropertyKind::MultiText:
    case ABPropertyKind::MultiDictionary: {
        const ABMultiValue *list = record.multiValue(info.property);
        return !list
            || (list->count() > 0 && std::ranges::all_of(list->entries(), [&info](const ABMultiValue::Entry &entry) {
                   return isSayableEntry(info.property, entry);
               }));
    }
    default:
        return true;
    }
}

/// A line of no value may be read as one, and two accounts as one, by what is kept of them; and parameters mean
/// something else in another version (RFC 6868) or when they were not UTF-8.
bool isSafe(const KeptLine &kept)
{
    const std::string text = kept.text.toStdString();
    const bool hasDecodedParams = !isAscii(std::string_view(text).substr(0, text.find(':')));
    if (hasDecodedParams || text.find('^') != std::string::npos)
        return false;
    const CardArea area = parsedLine(text).area();
    return kept.basis.isNull() ? area >= CardArea::AddressLabel : area != areaOf(kABInstantMessageProperty);
}

} // namespace

bool canSay(const QString &uid, const PersonRecord &record)
{
    return isSayable(uid) && uid == uid.trimmed()
        && std::ranges::all_of(
            allProperties(), [&record](const ABPropertyInfo &info) { return isSayableProperty(info, record); })
        && std::ranges::all_of(record.keptLines(), isSafe);
}

std::vector<std::string> exactLines(const CardValues &wanted, const CardValues &read)
{
    std::vector<std::string> lines;
    for (const ABPropertyInfo &info : allProperties()) {
        if (!isSame(info.property, wanted, read))
            lines.push_back(exactLine(info.name, info.property, wanted, read));
    }
    if (!isSame(std::nullopt, wanted, read))
        lines.push_back(exactLine(kImage, std::nullopt, wanted, read));
    return lines;
}

bool applyExactValue(std::string_view property, std::string_view sum, const QString &value, CardValues &values)
{
    const QString name = textOfUtf8(property);
    const auto which = propertyOf(name);
    if (!which && name != kImage)
        return false;
    const auto exact = recordFromJson(value.toStdString());
    if (!exact)
        return false;
    if (::sum(json(which, values)) == sum)
        copy(which, {exact.value().uid, *exact.value().record}, values);
    return true;
}
