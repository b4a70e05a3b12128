// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
// Reading and writing of the line that holds the picture.
#include "contacts/cards/CardFields.h"

#include <QCryptographicHash>

namespace {

/// Where the base64 of a picture inside the card begins, or an empty view when the picture is elsewhere.
std::string_view inlinePicture(const CardLine &line)
{
    const std::string_view value = trimmed(line.value);
    if (equalsIgnoringCase(value.substr(0, 5), "data:")) {
        const std::size_t marker = value.substr(0, 200).find("base64");
        const std::size_t comma = marker == std::string_view::npos ? marker : value.find(',', marker);
        return comma == std::string_view::npos ? std::string_view() : value.substr(comma + 1);
    }
    if (value.substr(0, 200).find("://") != std::string_view::npos)
        return {};
    if (line.encoding == CardLine::Encoding::Base64)
        return value;
    // Some programs leave out to say that it is base64.
    const bool looksLikePicture =
        value.starts_with("/9j/") || value.starts_with("iVBORw0KGgo") || value.starts_with("R0lGOD");
    return looksLikePicture && isBase64(value) ? value : std::string_view();
}

/// The name of the image format in TYPE and in media types; empty for one that is not known by its first bytes.
QLatin1StringView pictureType(const QByteArray &image)
{
    struct Magic
    {
        QByteArrayView bytes;
        QLatin1StringView type;
    };
    constexpr std::array magics{
        Magic{"\xFF\xD8\xFF", QLatin1StringView("JPEG")},
        Magic{"\x89PNG", QLatin1StringView("PNG")},
        Magic{"GIF8", QLatin1StringView("GIF")},
    };
    const auto *found =
        std::ranges::find_if(magics, [&image](const Magic &magic) { return image.startsWith(magic.bytes); });
    return found == magics.end() ? QLatin1StringView() : found->type;
}

} // namespace

bool readPhoto(CardDraft &draft, const CardLine &line)
{
    if (line.value.empty())
        return true;
    const std::string_view base64 = inlinePicture(line);
    if (base64.empty() || draft.record().imageData())
        return false;
    const QByteArray bytes = QByteArray::fromBase64(QByteArrayView(base64).toByteArray());
    if (bytes.isEmpty()) {
        draft.lose(line, QStringLiteral("PHOTO holds no picture"));
        return true;
    }
    draft.record().setImageData(bytes);
    draft.addSource(line, line.hasUnusualParams());
    return true;
}

bool writePhoto(const CardRow &row, const CardPerson &person, CardUnits &units)
{
    const QByteArray *image = person.record.imageData();
    if (image)
        units.push_back(std::string(row.name) + ':'
            + QCryptographicHash::hash(*image, QCryptographicHash::Sha1).toHex().toStdString());
    return true;
}

std::string printPhoto(const UnitToPrint &unit)
{
    const QByteArray &image = *unit.record.imageData();
    const QLatin1StringView type = pictureType(image);
    std::string head = unit.kept;
    if (head.empty()) {
        head = unit.plain.substr(0, unit.plain.find(':'));
        if (unit.form == VCardForm::V4)
            head += (type.isEmpty() ? ":data:" : ":data:image/" + QString(type).toLower().toStdString()) + ";base64,";
        else
            head += (type.isEmpty() ? ";ENCODING=b" : ";ENCODING=b;TYPE=" + QString(type).toStdString()) + ':';
    }
    return head + image.toBase64().toStdString();
}
