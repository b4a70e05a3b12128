// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/ExactValues.h"

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
    } else if (property == ABProperty::Uid) {
        to.uid = from.uid;
    } else {
        to.record.removeValue(*property);
        to.record.setValue(*property, from.record.value(*property));
    }
}

bool isSame(std::optional<ABProperty> property, const CardValues &a, const CardValues &b)
{
    if (property == ABProperty::Uid)
        return a.uid == b.uid;
    if (property)
        return a.record.value(*property) == b.record.value(*property);
    const QByteArray *left = a.record.imageData();
    const QByteArray *right = b.record.imageData();
    return left && right ? *left == *right : left == right;
}

/// The JSON of a record that has no other property.
std::string json(std::optional<ABProperty> property, const CardValues &values)
{
    CardValues only;
    copy(property, values, only);
    return recordToJson(only.uid.isEmpty() ? QString() : only.uid, only.record);
}

QString sum(std::string_view json)
{
    constexpr qsizetype digits = 16;
    const QByteArrayView bytes(json.data(), static_cast<qsizetype>(json.size()));
    return QString::fromLatin1(
        QCryptographicHash::hash(bytes.toByteArray(), QCryptographicHash::Sha1).toHex().first(digits));
}

QString exactLine(
    QLatin1StringView name, std::optional<ABProperty> property, const CardValues &wanted, const CardValues &read)
{
    return kExactLineName % QLatin1String(";X-PROPERTY=") % name % QLatin1String(";X-SUM=") % sum(json(property, read))
        % u':' % escaped(textFromUtf8(json(property, wanted)));
}

} // namespace

std::vector<QString> exactLines(const CardValues &wanted, const CardValues &read)
{
    std::vector<QString> lines;
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
    const QString name = textFromUtf8(property);
    const auto which = propertyOf(name);
    if (!which && name != kImage)
        return false;
    const auto exact = recordFromJson(value.toStdString());
    if (!exact)
        return false;
    if (::sum(json(which, values)) == textFromUtf8(sum))
        copy(which, {exact.value().uid, *exact.value().record}, values);
    return true;
}
