// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/ExactValues.h"

#include "contacts/cards/CardMap.h"
#include "contacts/cards/RecordJson.h"
#include "contacts/cards/TextCoding.h"
#include "contacts/model/RecordDifferences.h"

#include <QCryptographicHash>

namespace {

/// A part of a person is a property or the picture, by name.
bool isPart(QStringView name)
{
    return name == kPictureName || propertyNamed(name);
}

void copy(QStringView part, const CardValues &from, CardValues &to)
{
    const auto property = propertyNamed(part);
    if (!property) {
        to.record.setImageData(from.record.imageData() ? *from.record.imageData() : QByteArray());
    } else if (property == kABUIDProperty) {
        to.uid = from.uid;
    } else {
        to.record.removeValue(*property);
        to.record.setValue(*property, from.record.value(*property));
    }
}

/// The JSON of a record that has nothing else.
std::string json(QStringView part, const CardValues &values)
{
    CardValues only;
    copy(part, values, only);
    return recordToJson(only.uid.isEmpty() ? QString() : only.uid, only.record);
}

std::string sum(const std::string &json)
{
    constexpr qsizetype digits = 16;
    const QByteArray bytes = QByteArray::fromStdString(json);
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex().first(digits).toStdString();
}

/// A line of no value may be read as one, and two accounts as one, by what is kept of them; and parameters mean
/// something else in another version (RFC 6868) or when they were not UTF-8.
bool isSafeLine(const KeptLine &kept)
{
    const std::string text = kept.text.toStdString();
    const bool hasDecodedParams = !isAscii(std::string_view(text).substr(0, text.find(':')));
    if (hasDecodedParams || text.find('^') != std::string::npos)
        return false;
    const CardLine line = parsedLine(text);
    if (line.encoding == CardLine::Encoding::Base64) // of which blanks are no part, even where it is no base64
        return false;
    const CardArea area = line.area();
    return kept.basis.isNull() ? area >= CardArea::AddressLabel : area != areaOf(kABInstantMessageProperty);
}

} // namespace

bool isSafe(const PersonRecord &record)
{
    static const bool allHaveLines = std::ranges::all_of(
        allProperties(), [](const ABPropertyInfo &info) { return writtenRow(areaOf(info.property)); });
    return allHaveLines && std::ranges::all_of(record.keptLines(), isSafeLine);
}

std::vector<std::string> exactLines(const CardValues &wanted, const CardValues &read)
{
    std::vector<std::string> lines;
    if (wanted.uid == read.uid && wanted.record.hasSameValues(read.record))
        return lines;
    const auto addPart = [&](QLatin1StringView name) {
        const QString part(name);
        const std::string meant = json(part, wanted);
        const std::string said = json(part, read);
        if (meant != said)
            lines.push_back(std::string("X-PEOPLENOOK-EXACT;X-PROPERTY=") + name.data() + ";X-SUM=" + sum(said) + ':'
                + escaped(textOfUtf8(meant)));
    };
    for (const ABPropertyInfo &info : allProperties())
        addPart(info.name);
    addPart(kPictureName);
    return lines;
}

bool applyExactValue(std::string_view property, std::string_view sum, const QString &value, CardValues &values)
{
    const QString part = textOfUtf8(property);
    const auto exact = recordFromJson(value.toStdString());
    if (!isPart(part) || !exact)
        return false;
    if (::sum(json(part, values)) == sum)
        copy(part, {exact->uid, *exact->record}, values);
    return true;
}
