// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/StoredCard.h"

#include "contacts/cards/CardParts.h"
#include "contacts/cards/CardPatch.h"
#include "contacts/cards/VCardReader.h"
#include "contacts/cards/VCardWriter.h"
#include "contacts/stores/eds/EdsLog.h"

#include <QFile>
#include <QUrl>

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

namespace {

constexpr QByteArrayView kNumber{";X-EVOLUTION-E164="};
constexpr QByteArrayView kGoogleLabel{";X-GOOGLE-LABEL="};
constexpr QByteArrayView kServerMark{"X-EVOLUTION-WEBDAV-ETAG:"};
constexpr QByteArrayView kOther{";TYPE=OTHER"};

/// Where the parameter that begins at @p at ends.
qsizetype endOfParam(QByteArrayView line, qsizetype at)
{
    bool inQuotes = false;
    for (++at; at < line.size(); ++at) {
        if (line[at] == '"')
            inQuotes = !inQuotes;
        else if (!inQuotes && (line[at] == ';' || line[at] == ':'))
            break;
    }
    return at;
}

/// Removes a parameter; its value without quotes, null where there is none. Commas inside quotes are no separators.
QByteArray takeParam(QByteArray &line, QByteArrayView start)
{
    const qsizetype at = QByteArrayView(line).indexOf(start);
    if (at < 0 || at > line.indexOf(':'))
        return {};
    const qsizetype end = endOfParam(line, at);
    QByteArray value = line.mid(at + start.size(), end - at - start.size());
    if (value.startsWith('"') && value.endsWith('"') && value.size() > 1)
        value = value.sliced(1, value.size() - 2);
    line.remove(at, end - at);
    return value.isNull() ? QByteArray("") : value;
}

/// The number stands there as `1234,"+49"`, so it ends at the next ';' or ':' as well.
void dropNumber(QByteArray &line)
{
    takeParam(line, kNumber);
}

/// The label in a content line `item1.X-ABLabel:text` of the group that @p line is in; empty where there is none.
QByteArray spelledLabel(const QByteArray &text, const QByteArray &line)
{
    const qsizetype dot = line.indexOf('.');
    if (dot <= 0)
        return {};
    const QByteArray head = '\n' + line.first(dot) + ".X-ABLabel:";
    const qsizetype at = text.indexOf(head);
    if (at < 0)
        return {};
    QByteArray label;
    for (qsizetype i = at + head.size(); i < text.size(); ++i) {
        if (text[i] == '\r' || text[i] == '\n') {
            const qsizetype next = text[i] == '\r' && text.mid(i + 1, 1) == "\n" ? i + 2 : i + 1;
            if (next >= text.size() || (text[next] != ' ' && text[next] != '\t'))
                break;
            i = next;
        } else {
            label += text[i];
        }
    }
    return label;
}

/// The label as it stands in X-GOOGLE-LABEL; empty where that cannot hold it.
QByteArray parameterText(QByteArray label)
{
    const bool breaksOut = std::ranges::any_of(
        label, [](char c) { return c == '"' || (static_cast<unsigned char>(c) < ' ') || c == '\x7F'; });
    if (breaksOut || label.contains("\\n") || label.contains("\\N"))
        return {};
    return label.replace("\\,", ",").replace("\\;", ";").replace("\\\\", "\\");
}

bool isLabelled(const QByteArray &line)
{
    const qsizetype dot = line.indexOf('.');
    const QByteArrayView name = QByteArrayView(line).sliced(dot + 1);
    return dot > 0 && (name.startsWith("EMAIL") || name.startsWith("TEL") || name.startsWith("ADR"));
}

QByteArray unfoldedLine(const QByteArray &text, qsizetype begin, qsizetype &end)
{
    QByteArray line;
    for (;;) {
        end = text.indexOf('\n', begin);
        end = end < 0 ? text.size() : end + 1;
        qsizetype length = end - begin;
        while (length > 0 && (text[begin + length - 1] == '\n' || text[begin + length - 1] == '\r'))
            --length;
        line.append(text.constData() + begin, length);
        if (end >= text.size() || (text[end] != ' ' && text[end] != '\t'))
            return line;
        begin = end + 1;
    }
}

bool holdsText(std::string_view line, QByteArrayView wanted)
{
    return ::memmem(line.data(), line.size(), wanted.data(), std::size_t(wanted.size())) != nullptr;
}

/// Whether the daemon, and nobody else, writes and rewrites this line.
bool isStamp(std::string_view line)
{
    return (line.front() == 'R' && line.starts_with("REV:"))
        || (line.front() == 'X' && line.starts_with({kServerMark.data(), std::size_t(kServerMark.size())}));
}

/// Only TEL, EMAIL and ADR, and they may stand in a group; most lines show by their first letter that they are others.
bool mayNeedWork(std::string_view line)
{
    const char first = line.empty() ? '\0' : line.front();
    if (first == 'T' || first == 'E' || first == 'A')
        return true;
    const std::size_t nameEnd = line.find_first_of(".;:");
    return nameEnd != std::string_view::npos && line[nameEnd] == '.';
}

QByteArray asOwnWriting(const QByteArray &text, QByteArray line)
{
    dropNumber(line);
    if (!holdsText({line.constData(), std::size_t(line.size())}, kGoogleLabel))
        return line + "\r\n";
    const QByteArray label = parameterText(spelledLabel(text, line));
    QByteArray bare = line;
    const QByteArray google = takeParam(bare, kGoogleLabel);
    if (label.isEmpty() || google != label)
        return line + "\r\n";
    takeParam(bare, kOther);
    return bare + "\r\n";
}

/// What the daemon moves into files of its own.
constexpr std::array kPictures{QByteArrayView("PHOTO"), QByteArrayView("LOGO")};

/// The name of a picture's line that stands for a file; empty for any other line.
QByteArrayView filePictureName(QByteArrayView line)
{
    const auto *name = std::ranges::find_if(kPictures, [&line](QByteArrayView each) {
        return line.startsWith(each) && line.size() > each.size()
            && (line[each.size()] == ';' || line[each.size()] == ':');
    });
    return name != kPictures.end() && line.contains("file://") ? *name : QByteArrayView();
}

bool isFilePhoto(QByteArrayView line)
{
    return filePictureName(line) == kPictures.front();
}

/// Takes the line out in which the daemon remembers the server's version of a card; empty where there is none.
QByteArray takeServerMark(QByteArray &text)
{
    const QByteArray head = '\n' + kServerMark.toByteArray();
    const qsizetype at = text.indexOf(head) + 1;
    if (at == 0)
        return {};
    qsizetype end = 0;
    unfoldedLine(text, at, end);
    QByteArray line = text.mid(at, end - at);
    text.remove(at, end - at);
    return line;
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
        return each.basis.isNull() && each.text.startsWith(QLatin1String("PHOTO")) && isFilePhoto(each.text.toUtf8());
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

/// Labels of the user's own, for those who do not know X-ABLabel.
QByteArray withGoogleLabels(const QByteArray &card)
{
    QByteArray result;
    result.reserve(card.size() + card.size() / 4);
    qsizetype end = 0;
    for (qsizetype begin = 0; begin < card.size(); begin = end) {
        QByteArray line = unfoldedLine(card, begin, end);
        const bool isPlain = isLabelled(line) && !line.first(line.indexOf(':')).contains(";TYPE=")
            && QByteArrayView(line).indexOf(kGoogleLabel) < 0;
        const QByteArray label = isPlain ? parameterText(spelledLabel(card, line)) : QByteArray();
        if (label.isEmpty()) {
            result += card.mid(begin, end - begin);
            continue;
        }
        const qsizetype head = std::min(line.indexOf(':'), endOfParam(line, 0));
        result += line.insert(head, kOther.toByteArray() + kGoogleLabel.toByteArray() + '"' + label + '"') + "\r\n";
    }
    return result;
}

/// Appends a line without the number in its parameters, as asOwnWriting() makes it of a line that has no label and no
/// fold, at a fraction of its cost: nearly all lines that need work are such.
void appendWithoutNumber(QByteArray &to, QByteArrayView line, qsizetype number)
{
    to += line.first(number);
    to += line.sliced(number < line.indexOf(':') ? endOfParam(line, number) : number);
    to += "\r\n";
}

/// Appends the normalised text. Whether that is a person: a list of contacts is nobody.
bool appendNormalised(QByteArray &to, const QByteArray &text)
{
    const std::string_view all(text.constData(), std::size_t(text.size()));
    bool isPerson = true;
    std::size_t end = 0;
    std::size_t kept = 0; // up to where the text is in the result
    const auto copyUpTo = [&](std::size_t place) { to.append(text.constData() + kept, qsizetype(place - kept)); };
    for (std::size_t begin = 0; begin < all.size(); begin = end) {
        int physicalLines = 0;
        do { // with its folds
            end = all.find('\n', end);
            end = end == std::string_view::npos ? all.size() : end + 1;
            ++physicalLines;
        } while (end < all.size() && (all[end] == ' ' || all[end] == '\t'));
        std::string_view line = all.substr(begin, end - begin);
        if (line.front() == 'X' && line.starts_with("X-EVOLUTION-LIST:TRUE"))
            isPerson = false;
        if (isStamp(line)) {
            copyUpTo(begin);
            kept = end;
            continue;
        }
        if (!mayNeedWork(line))
            continue;
        const std::size_t number = line.find({kNumber.data(), std::size_t(kNumber.size())});
        const bool hasLabel = holdsText(line, kGoogleLabel);
        if (number == std::string_view::npos && !hasLabel)
            continue;
        copyUpTo(begin);
        kept = end;
        if (hasLabel || physicalLines > 1) {
            qsizetype lineEnd = 0;
            to += asOwnWriting(text, unfoldedLine(text, qsizetype(begin), lineEnd));
            continue;
        }
        while (!line.empty() && (line.back() == '\n' || line.back() == '\r'))
            line.remove_suffix(1);
        appendWithoutNumber(to, {line.data(), qsizetype(line.size())}, qsizetype(number));
    }
    copyUpTo(all.size());
    return isPerson;
}

} // namespace

QByteArray StoredCard::normalised(const QByteArray &text)
{
    QByteArray result;
    result.reserve(text.size());
    appendNormalised(result, text);
    return result;
}

PersonRecordPtr StoredCard::recordOf(const QByteArray &text)
{
    QByteArray card;
    if (!appendNormalised(card, text))
        return nullptr;
    VCardReader reader(card);
    return withPicture(reader.next().record);
}

std::vector<StoredCard::Read> StoredCard::read(const std::vector<EdsBook::Card> &cards)
{
    std::vector<Read> results;
    results.reserve(cards.size());
    qsizetype size = 0;
    for (const auto &card : cards)
        size += card.text.size() + 2;
    QByteArray people;
    people.reserve(size);
    for (const auto &card : cards) {
        const qsizetype begin = people.size();
        const bool isPerson = appendNormalised(people, card.text);
        results.push_back({nullptr, std::max<std::size_t>(qHash(QByteArrayView(people).sliced(begin)), 1)});
        if (isPerson)
            people += "\r\n";
        else
            people.truncate(begin);
    }
    // A reader is expensive to make. It passes over a card that is no person, so the uid tells which one it read.
    VCardReader reader(people);
    std::size_t at = 0;
    for (ImportedRecord person = reader.next(); person.record; person = reader.next()) {
        const QByteArray uid = person.uid.toUtf8();
        const auto found = std::find_if(
            cards.begin() + qsizetype(at), cards.end(), [&uid](const EdsBook::Card &card) { return card.uid == uid; });
        if (found == cards.end())
            continue;
        at = std::size_t(found - cards.begin());
        results[at].record = withPicture(person.record);
    }
    // Whose uid reads as another text than the daemon's, such as one with a blank at its end.
    for (std::size_t i = 0; i < cards.size(); ++i) {
        if (!results[i].record)
            results[i].record = recordOf(cards[i].text);
    }
    return results;
}

QByteArray StoredCard::cardOf(const QString &uid, const PersonRecord &record)
{
    return withGoogleLabels(vCardFromRecord(uid, record));
}

QByteArray StoredCard::patched(const QByteArray &text, const QString &uid, const PersonRecord &after)
{
    const PersonRecordPtr before = recordOf(text);
    return before ? patchedCard(text, cardOf(uid, after), {uid, *before, after}) : QByteArray();
}

QByteArray StoredCard::withPictureInside(const QByteArray &text)
{
    QByteArray result;
    qsizetype end = 0;
    for (qsizetype begin = 0; begin < text.size(); begin = end) {
        const QByteArray line = unfoldedLine(text, begin, end);
        const QByteArrayView name = filePictureName(line);
        const QByteArray picture = name.isEmpty() ? QByteArray() : fileContent(line);
        if (!name.isEmpty() && picture.isEmpty())
            qCWarning(lcEds).noquote() << "a picture cannot be read and is kept as a link only:" << line;
        result += picture.isEmpty() ? text.mid(begin, end - begin)
                                    : name.toByteArray() + ";ENCODING=b:" + picture.toBase64() + "\r\n";
    }
    return result;
}

QByteArray StoredCard::withServerMark(QByteArray text, QByteArray other)
{
    takeServerMark(text);
    const QByteArray mark = takeServerMark(other);
    return text.insert(text.lastIndexOf("END:VCARD"), mark);
}
