// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/Card.h"

#include "contacts/cards/CardMap.h"

#include <algorithm>

namespace {

constexpr std::size_t kLineLength = 75;

bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

/// Where to end a line of at most @p room bytes that begins at @p at: never inside a character, and if possible not
/// before a blank, which some readers drop.
std::size_t foldPosition(std::string_view line, std::size_t at, std::size_t room)
{
    std::size_t end = at + room;
    while (end > at && isContinuation(line[end]))
        --end;
    if (end == at) // what stays of another program's line need not be UTF-8
        return at + room;
    std::size_t better = end;
    while (better > at + room / 2 && (isBlank(line[better]) || isContinuation(line[better])))
        --better;
    return isBlank(line[better]) || isContinuation(line[better]) ? end : better;
}

/// Whether it may be read as a part of the line before it, or what is behind it as a part of it.
bool mayJoinOthers(const CardLine &line)
{
    const std::size_t begin = line.raw.find_first_not_of("\r\n\xEF\xBB\xBF");
    const std::string_view text = line.raw.substr(std::min(begin, line.raw.size()));
    const bool isIndented = text.starts_with(' ') || text.starts_with('\t');
    const bool continuesPicture = !line.hasColon && isBase64(text.substr(0, text.find_first_of("\r\n")));
    const bool runsOn = line.encoding == CardLine::Encoding::QuotedPrintable && trimmed(line.value).ends_with('=');
    return isIndented || continuesPicture || runsOn || line.opensCard();
}

} // namespace

Card::Card(const QByteArray &text) : m_reader(text)
{
    static const PersonRecordPtr nobody = std::make_shared<const PersonRecord>();
    m_record = nobody;
    if (text.isEmpty())
        return;
    int begins = 0;
    int ends = 0;
    bool standsAlone = true; // each line does, inside the card and whatever stands before or behind it
    CardLine line;
    while (m_reader.next(line)) {
        begins += line.area() == CardArea::Begin ? 1 : 0;
        standsAlone = standsAlone && !mayJoinOthers(line) && begins == 1 && ends == 0;
        ends += line.area() == CardArea::End ? 1 : 0;
        if (line.area() != CardArea::Begin && line.area() != CardArea::End)
            m_lines.push_back(line);
    }
    m_isOne = begins == 1 && ends == 1 && standsAlone && utf8FromWideData(text).size() == text.size();
    CardReader reader;
    std::vector<ImportProblem> problems;
    if (const PersonRecordPtr record = reader.read(m_lines, m_reader.texts(), problems, &m_meanings).record)
        m_record = record;
}

bool Card::holdsValue(const CardLine &line) const
{
    const auto alone = [&] { return recordOfLines({line}).record; };
    if (line.area() == CardArea::Picture)
        return line.value.find("file://") != std::string_view::npos || alone()->imageData();
    if (line.area() != areaOf(kABPersonFlags))
        return true;
    const PersonRecordPtr record = alone();
    return !record || record->flags();
}

QByteArray Card::rawLine(const CardLine &line) const
{
    const QByteArray raw = QByteArrayView(line.raw).toByteArray();
    return raw.endsWith('\n') || raw.endsWith('\r') ? raw : raw + "\r\n";
}

ImportedRecord recordOfLines(std::vector<CardLine> lines)
{
    TextBuffers texts;
    std::vector<ImportProblem> problems;
    return CardReader().read(lines, texts, problems);
}

void appendFolded(QByteArray &out, std::string_view line)
{
    std::size_t at = 0;
    std::size_t room = kLineLength;
    while (line.size() - at > room) {
        const std::size_t end = foldPosition(line, at, room);
        out.append(line.substr(at, end - at));
        out.append("\r\n ");
        at = end;
        room = kLineLength - 1; // the blank counts
    }
    out.append(line.substr(at));
    out.append("\r\n");
}
