// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/LineReader.h"

#include "contacts/cards/TextCoding.h"

#include <cstring>
#include <tuple>
#include <utility>

namespace {

using Encoding = CardLine::Encoding;

const char *find(const char *begin, const char *end, char wanted)
{
    const void *found = begin == end ? nullptr : std::memchr(begin, wanted, static_cast<std::size_t>(end - begin));
    return found ? static_cast<const char *>(found) : end;
}

/// A quoted-printable value ends in '=' at a soft break, whatever few blanks a mail program put behind it.
bool endsInSoftBreak(std::string_view text)
{
    constexpr std::size_t most = 80;
    text.remove_prefix(text.size() - std::min(text.size(), most));
    const std::size_t last = text.find_last_not_of(" \t");
    return last != std::string_view::npos && text[last] == '=';
}

/// The lines that no value can swallow.
bool isFrame(std::string_view line)
{
    const char first = line.empty() ? '\0' : upperAscii(line.front());
    if (first != 'B' && first != 'E' && !isBlank(first))
        return false;
    const std::string_view text = trimmed(line);
    return equalsIgnoringCase(text, "END:VCARD") || equalsIgnoringCase(text, "BEGIN:VCARD");
}

} // namespace

LineReader::LineReader(QByteArray data)
    : m_data(std::move(data))
    , m_at(m_data.constData())
    , m_end(m_at + m_data.size())
    , m_isUtf8(::isUtf8(view(m_data)))
    , m_lineFeed(find(m_at, m_end, '\n'))
{ }

bool LineReader::atFold() const
{
    if (m_indent == 0)
        return m_at != m_end && isBlank(*m_at);
    const auto wanted = static_cast<qsizetype>(m_indent) + 1;
    return m_end - m_at >= wanted && std::all_of(m_at, m_at + wanted, isBlank);
}

std::string_view LineReader::takePhysicalLine()
{
    const char *begin = m_at;
    const char *carriage = find(begin, m_lineFeed, '\r');
    const char *afterRun = carriage;
    while (afterRun != m_lineFeed && *afterRun == '\r')
        ++afterRun;
    if (afterRun == m_lineFeed) {
        m_at = m_lineFeed == m_end ? m_end : m_lineFeed + 1;
        ++m_line;
    } else {
        // Bare carriage returns, one line end each; all but the first end blank lines.
        m_at = afterRun;
        m_line += afterRun - carriage;
    }
    if (m_lineFeed < m_at)
        m_lineFeed = find(m_at, m_end, '\n');
    return {begin, static_cast<std::size_t>(carriage - begin)};
}

std::string_view LineReader::peekPhysicalLine()
{
    const char *carriage = find(m_at, m_lineFeed, '\r');
    return {m_at, static_cast<std::size_t>(carriage - m_at)};
}

bool LineReader::takeSoftBreak(std::string &text)
{
    if (atEnd() || !endsInSoftBreak(text) || isFrame(peekPhysicalLine()))
        return false;
    text.erase(text.rfind('='));
    text += takePhysicalLine();
    return true;
}

/// Takes the next line with its folds, unless it is the next property, whose colon may stand behind a fold.
bool LineReader::takeBase64(std::string &text)
{
    const std::string_view line = peekPhysicalLine();
    if (line.empty() || !isBase64(line))
        return false;
    const std::tuple before(m_at, m_lineFeed, m_line);
    std::string more(takePhysicalLine());
    while (atFold())
        more += takePhysicalLine().substr(m_indent + 1);
    if (more.find(':') != std::string::npos) {
        std::tie(m_at, m_lineFeed, m_line) = before;
        return false;
    }
    text += more;
    return true;
}

void LineReader::unfold(CardLine &line, std::string_view first, HeadFinder head)
{
    std::string &text = m_buffers.emplace_back(first);
    bool isHeadRead = head.colon != HeadFinder::npos;
    for (;;) {
        if (line.encoding == Encoding::QuotedPrintable && takeSoftBreak(text))
            continue;
        if (atFold())
            text += takePhysicalLine().substr(m_indent + 1);
        else if (line.encoding != Encoding::Base64 || atEnd() || !takeBase64(text))
            break;
        if (isHeadRead || !head.find(text))
            continue;
        isHeadRead = true;
        parseLine(line, text, head); // for its encoding
    }
    if (!isHeadRead)
        head.findIgnoringQuotes(text);
    parseLine(line, text, head);
}

bool LineReader::next(CardLine &line)
{
    const char *begin = m_at;
    std::string_view text;
    qint64 number = 0;
    std::size_t indent = 0;
    do {
        if (atEnd())
            return false;
        number = m_line + 1;
        text = takePhysicalLine();
        while (takePrefix(text, kByteOrderMark)) // files joined into one bring theirs along
            continue;
        indent = text.size();
        if (!text.empty() && isBlank(text.front()))
            text = trimmed(text);
        indent -= text.size();
    } while (text.empty());
    const bool frames = isFrame(text);
    if (frames)
        m_indent = indent;
    HeadFinder head;
    const bool isFolded = !frames && atFold();
    if (!head.find(text) && !isFolded)
        head.findIgnoringQuotes(text);
    parseLine(line, text, head);
    const bool softBreak = line.encoding == Encoding::QuotedPrintable && endsInSoftBreak(text);
    if (isFolded || softBreak || line.encoding == Encoding::Base64)
        unfold(line, text, head);
    line.number = number;
    line.isUtf8 = m_isUtf8;
    line.raw = {begin, static_cast<std::size_t>(m_at - begin)};
    return true;
}
