// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/CardLine.h"

#include "contacts/cards/CardMap.h"
#include "contacts/cards/TextCoding.h"

namespace {

using Encoding = CardLine::Encoding;

/// Of a word of ENCODING; 2.1 also has them as parameters of their own.
std::optional<Encoding> encodingOf(std::string_view word)
{
    if (equalsIgnoringCase(word, "QUOTED-PRINTABLE"))
        return Encoding::QuotedPrintable;
    if (equalsIgnoringCase(word, "BASE64") || equalsIgnoringCase(word, "B"))
        return Encoding::Base64;
    if (equalsIgnoringCase(word, "8BIT") || equalsIgnoringCase(word, "7BIT"))
        return Encoding::Plain;
    return std::nullopt;
}

std::string_view withoutQuotes(std::string_view text)
{
    if (text.starts_with('"'))
        text.remove_prefix(1);
    if (text.ends_with('"'))
        text.remove_suffix(1);
    return text;
}

/// The length of @p text up to the first @p separator outside quotes.
std::size_t unquotedLength(std::string_view text, char separator)
{
    bool inQuotes = false;
    std::size_t at = 0;
    for (; at < text.size() && (inQuotes || text[at] != separator); ++at) {
        if (text[at] == '"')
            inQuotes = !inQuotes;
    }
    return at;
}

void readParams(CardLine &line)
{
    std::string_view rest = line.params;
    LineParam param;
    while (takeParam(rest, param)) {
        const unsigned bit = paramBit(param.name);
        line.paramBits |= bit;
        std::optional<Encoding> encoding;
        if (bit == CardParam::Bare)
            encoding = encodingOf(param.value);
        else if (bit == CardParam::Encoding)
            encoding = encodingOf(withoutQuotes(param.value));
        if (encoding)
            line.encoding = *encoding;
        else if (bit == CardParam::Charset)
            line.charset = withoutQuotes(param.value);
        else if (bit == CardParam::Type || bit == CardParam::Bare) {
            for (std::string_view word; takeWord(param.value, word);)
                line.types |= typeBit(word);
        }
    }
}

/// One parameter as 3.0 has it; nothing for those that only say how the value's bytes were written.
void appendParam(std::string &out, const LineParam &param)
{
    const unsigned bit = paramBit(param.name);
    const bool maybeEncoding = bit == CardParam::Bare || bit == CardParam::Encoding;
    const auto encoding = maybeEncoding ? encodingOf(withoutQuotes(param.value)) : std::nullopt;
    if (bit == CardParam::Charset)
        return;
    if (encoding)
        out.append(*encoding == Encoding::Base64 ? ";ENCODING=b" : "");
    else
        out.append(";").append(param.name.empty() ? "TYPE" : param.name).append("=").append(param.value);
}

} // namespace

CardArea CardLine::area() const
{
    return row ? row->area : CardArea::None;
}

bool CardLine::frames(CardArea beginOrEnd, std::string_view component) const
{
    return area() == beginOrEnd && equalsIgnoringCase(trimmed(value), component);
}

bool CardLine::opensCard() const
{
    return area() == CardArea::Agent && equalsIgnoringCase(trimmed(value), "BEGIN:VCARD");
}

bool takeParam(std::string_view &rest, LineParam &param)
{
    while (!rest.empty()) {
        rest.remove_prefix(1); // the ';'
        const std::size_t length = unquotedLength(rest, ';');
        const std::string_view text = trimmed(rest.substr(0, length));
        rest.remove_prefix(length);
        if (text.empty())
            continue;
        const std::size_t equals = text.find('=');
        param.name = equals == std::string_view::npos ? std::string_view() : trimmed(text.substr(0, equals));
        param.value = equals == std::string_view::npos ? text : trimmed(text.substr(equals + 1));
        return true;
    }
    return false;
}

bool takeWord(std::string_view &rest, std::string_view &word)
{
    const auto separates = [](char c) { return c == ',' || c == '"' || c == ' ' || c == '\t'; };
    std::size_t first = 0;
    while (first < rest.size() && separates(rest[first]))
        ++first;
    std::size_t end = first;
    while (end < rest.size() && rest[end] != ',' && rest[end] != '"')
        ++end;
    word = rest.substr(first, end - first);
    rest.remove_prefix(end);
    if (word.empty())
        return false;
    if (separates(word.back()))
        word = trimmed(word);
    // Seen in the wild: TYPE=HOME,TYPE=VOICE
    if (word.size() > 5 && equalsIgnoringCase(word.substr(0, 5), "TYPE="))
        word.remove_prefix(5);
    return true;
}

std::string_view paramValue(const CardLine &line, std::string_view name)
{
    std::string_view rest = line.params;
    LineParam param;
    while (takeParam(rest, param)) {
        if (equalsIgnoringCase(param.name, name))
            return withoutQuotes(param.value);
    }
    return {};
}

std::string_view findWord(const CardLine &line, unsigned params, const std::function<bool(std::string_view)> &wanted)
{
    LineParam param;
    for (std::string_view rest = line.params; takeParam(rest, param);) {
        std::string_view word;
        while ((paramBit(param.name) & params) != 0 && takeWord(param.value, word)) {
            if (wanted(word))
                return word;
        }
    }
    return {};
}

bool HeadFinder::find(std::string_view text)
{
    for (; m_position < text.size(); ++m_position) {
        const char c = text[m_position];
        if (c > ';')
            continue;
        if (c == ':' && !m_inQuotes) {
            colon = m_position;
            return true;
        }
        if (c == ';' && semicolon == npos)
            semicolon = m_position;
        else if (c == '.' && semicolon == npos && dot == npos)
            dot = m_position;
        else if (c == '"' && semicolon != npos)
            m_inQuotes = !m_inQuotes;
    }
    return false;
}

void parseLine(CardLine &line, std::string_view text, const HeadFinder &head)
{
    static constexpr CardLine kNone;
    line = kNone;
    if (head.colon == HeadFinder::npos) {
        line.value = text;
        return;
    }
    line.hasColon = true;
    line.value = text.substr(head.colon + 1);
    const std::size_t nameEnd = std::min(head.semicolon, head.colon);
    const std::size_t nameBegin = head.dot < nameEnd ? head.dot + 1 : 0;
    if (nameBegin > 0)
        line.group = trimmed(text.substr(0, nameBegin - 1));
    line.name = trimmed(text.substr(nameBegin, nameEnd - nameBegin));
    // Or a line that is kept could be another one when it is read again.
    while (takePrefix(line.name, ".") || takePrefix(line.name, kByteOrderMark))
        line.name = trimmed(line.name);
    line.params = text.substr(nameEnd, head.colon - nameEnd);
    line.row = cardRow(line.name);
    if (!line.params.empty())
        readParams(line);
}

CardLine parsedLine(std::string_view text)
{
    CardLine line;
    HeadFinder head;
    if (!head.find(text))
        head.findIgnoringQuotes(text);
    parseLine(line, text, head);
    return line;
}

namespace {

/// The line as it stands in memory, odd blanks and empty parameters included, if it may be written so; else empty.
std::string_view wholeLine(const CardLine &line, std::string_view group, std::string_view value)
{
    constexpr unsigned rewritten = CardParam::Bare | CardParam::Charset | CardParam::Encoding;
    const char *begin = line.name.data();
    const char *headEnd = line.params.data() + line.params.size();
    const bool isWhole = begin + line.name.size() == line.params.data() && headEnd + 1 == value.data();
    if (!group.empty() || !isWhole || line.has(rewritten))
        return {};
    return {begin, static_cast<std::size_t>(value.data() + value.size() - begin)};
}

} // namespace

std::string normalisedLine(const CardLine &line, std::string_view group, std::string_view value)
{
    const std::string_view whole = wholeLine(line, group, value);
    if (!whole.empty() && isUtf8(whole))
        return std::string(whole);
    std::string text;
    if (!group.empty())
        text.append(group).push_back('.');
    text += line.name;
    std::string_view rest = line.params;
    LineParam param;
    while (takeParam(rest, param))
        appendParam(text, param);
    text += ':';
    if (!isUtf8(text)) {
        std::string utf8;
        TextDecoder().appendDecoded(text, line.charset, utf8);
        text = std::move(utf8);
    }
    for (std::size_t end = 0; (end = value.find('\n')) != std::string_view::npos; value.remove_prefix(end + 1))
        text.append(value.substr(0, end)).append("\\n");
    text += value;
    return text;
}
