// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/StoredCard.h"

#include "contacts/cards/CardMap.h"
#include "contacts/cards/CardReader.h"
#include "contacts/cards/VCardReader.h"
#include "contacts/cards/VCardWriter.h"
#include "contacts/stores/eds/EdsLog.h"

#include <QFile>
#include <QUrl>

#include <algorithm>
#include <string_view>

namespace {

constexpr std::string_view kNumber = "X-EVOLUTION-E164";
constexpr std::string_view kGoogleLabel = "X-GOOGLE-LABEL";
constexpr std::string_view kServerMark = "X-EVOLUTION-WEBDAV-ETAG";

/// Whether the daemon, and no other program, writes and rewrites this line.
bool isStamp(const CardLine &line)
{
    return equalsIgnoringCase(line.name, "REV") || equalsIgnoringCase(line.name, kServerMark);
}

/// Whether the line's label for other programs is the one that its group spells out.
bool hasOwnLabel(const CardLine &line, const std::vector<CardLine> &lines)
{
    if ((line.paramBits & CardParam::GoogleLabel) == 0 || line.group.empty())
        return false;
    const auto label = std::ranges::find_if(lines, [&line](const CardLine &each) {
        return each.area() == CardArea::Label && equalsIgnoringCase(each.group, line.group);
    });
    return label != lines.end() && !label->value.empty()
        && unescaped(label->value) == textOfUtf8(paramValue(line, kGoogleLabel));
}

/// The line, unfolded, without the number and our own label for other programs.
void appendOwnWriting(std::string &text, const CardLine &line, bool hasLabel)
{
    if (!line.group.empty())
        text.append(line.group).append(".");
    text.append(line.name);
    LineParam param;
    for (std::string_view rest = line.params; takeParam(rest, param);) {
        const bool isOfLabel = equalsIgnoringCase(param.name, kGoogleLabel)
            || (equalsIgnoringCase(param.name, "TYPE") && equalsIgnoringCase(param.value, "OTHER"));
        if (equalsIgnoringCase(param.name, kNumber) || (hasLabel && isOfLabel))
            continue;
        text.append(";").append(param.name).append(param.name.empty() ? "" : "=").append(param.value);
    }
    text.append(":").append(line.value);
}

/// Takes the lines from @p reader without what normalised() leaves out.
std::vector<CardLine> takeNormalised(LineReader &reader)
{
    std::vector<CardLine> lines;
    CardLine line;
    while (reader.next(line)) {
        if (!isStamp(line))
            lines.push_back(line);
    }
    for (CardLine &each : lines) {
        const bool hasLabel = hasOwnLabel(each, lines);
        if (!hasLabel && paramValue(each, kNumber).empty())
            continue;
        std::string &text = reader.texts().emplace_back();
        appendOwnWriting(text, each, hasLabel);
        text.append("\r\n");
        each = parsedLine(std::string_view(text).substr(0, text.size() - 2));
        each.raw = text;
    }
    return lines;
}

bool isPerson(const std::vector<CardLine> &lines)
{
    return std::ranges::none_of(lines, [](const CardLine &line) {
        return equalsIgnoringCase(line.name, "X-EVOLUTION-LIST") && equalsIgnoringCase(line.value, "TRUE");
    });
}

QByteArray joined(const std::vector<CardLine> &lines)
{
    QByteArray text;
    for (const CardLine &line : lines)
        text.append(line.raw);
    return text;
}

/// Whether the line is a picture of the kind that the daemon moves into separate files.
bool isFilePicture(const CardLine &line)
{
    return (line.area() == CardArea::Picture || equalsIgnoringCase(line.name, "LOGO"))
        && line.value.find("file://") != std::string_view::npos;
}

/// Takes the line out in which the daemon remembers the server's version of a card; empty where there is none.
QByteArray takeServerMark(QByteArray &text)
{
    LineReader reader(text);
    CardLine line;
    while (reader.next(line)) {
        if (!equalsIgnoringCase(line.name, kServerMark))
            continue;
        const QByteArray mark = QByteArrayView(line.raw).toByteArray();
        text = QByteArray(text).remove(reader.bytesRead() - mark.size(), mark.size());
        return mark;
    }
    return {};
}

QByteArray fileContent(const QByteArray &line)
{
    const QByteArray uri = line.mid(line.indexOf("file://")).trimmed();
    QFile file(QUrl::fromEncoded(uri).toLocalFile());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The record with the picture that its card names by the daemon's file.
PersonRecordPtr withPicture(const PersonRecordPtr &record)
{
    if (!record || record->imageData())
        return record;
    const std::vector<KeptLine> &lines = record->keptLines();
    const auto line = std::ranges::find_if(lines, [](const KeptLine &each) {
        return each.basis.isNull() && each.text.startsWith(QLatin1StringView("PHOTO"))
            && each.text.contains(QLatin1StringView("file://"));
    });
    const QByteArray picture = line == lines.end() ? QByteArray() : fileContent(line->text.toUtf8());
    if (picture.isEmpty())
        return record;
    std::vector<KeptLine> kept = lines;
    kept.erase(kept.begin() + (line - lines.begin()));
    auto whole = std::make_shared<PersonRecord>(*record);
    whole->setKeptLines(std::move(kept));
    whole->setImageData(picture);
    return whole;
}

/// The record of the lines, which become those that are read. Null where they are no person.
PersonRecordPtr recordOfCard(CardReader &cards, LineReader &reader, std::vector<CardLine> &lines)
{
    if (!isPerson(lines))
        return nullptr;
    if (std::ranges::count(lines, CardArea::Begin, &CardLine::area) != 1) // such as a card within the card
        return withPicture(VCardReader(joined(lines)).next().record);
    std::erase_if(
        lines, [](const CardLine &line) { return line.area() == CardArea::Begin || line.area() == CardArea::End; });
    std::vector<ImportProblem> problems;
    return withPicture(cards.read(lines, reader.texts(), problems).record);
}

} // namespace

QByteArray StoredCard::normalised(const QByteArray &text)
{
    LineReader reader(text);
    return joined(takeNormalised(reader));
}

PersonRecordPtr StoredCard::recordOf(const QByteArray &text)
{
    return read({{{}, text}}).front().record;
}

std::vector<StoredCard::Read> StoredCard::read(const std::vector<EdsBook::Card> &cards)
{
    std::vector<Read> results;
    results.reserve(cards.size());
    CardReader cardReader; // which keeps its memory
    for (const EdsBook::Card &card : cards) {
        LineReader reader(card.text);
        std::vector<CardLine> lines = takeNormalised(reader);
        const std::size_t digest = std::max<std::size_t>(qHash(joined(lines)), 1);
        results.push_back({recordOfCard(cardReader, reader, lines), digest});
    }
    return results;
}

QByteArray StoredCard::updated(const QByteArray &text, const QString &uid, const PersonRecord &after)
{
    const auto before = text.isEmpty() ? std::make_shared<const PersonRecord>() : recordOf(text);
    return before ? updateCard(text, {uid, *before, after, VCardForm::Desktop}) : QByteArray();
}

QByteArray StoredCard::withPictureInside(const QByteArray &text)
{
    QByteArray result;
    LineReader reader(text);
    CardLine line;
    while (reader.next(line)) {
        const QByteArray raw = QByteArrayView(line.raw).toByteArray();
        const QByteArray value = QByteArrayView(line.value).toByteArray();
        const QByteArray picture = isFilePicture(line) ? fileContent(value) : QByteArray();
        if (isFilePicture(line) && picture.isEmpty())
            qCWarning(lcEds).noquote() << "a picture cannot be read and is kept as a link only:" << raw.trimmed();
        const QByteArray name = QByteArrayView(line.name).toByteArray();
        result += picture.isEmpty() ? raw : name + ";ENCODING=b:" + picture.toBase64() + "\r\n";
    }
    return result;
}

QByteArray StoredCard::withServerMark(QByteArray text, QByteArray other)
{
    takeServerMark(text);
    const QByteArray mark = takeServerMark(other);
    return text.insert(text.lastIndexOf("END:VCARD"), mark);
}
