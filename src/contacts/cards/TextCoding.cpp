// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/TextCoding.h"

#include <simdjson.h>

#include <array>
#include <charconv>

namespace {

/// Whether bytes of the charset are told from the bytes themselves. UTF-8 and windows-1252 tell themselves apart, and
/// programs that declare ISO-8859-1 write windows-1252, which only adds printable characters to it, or UTF-8. A line of
/// a file that is read as bytes cannot be in units of two.
bool isToldFromBytes(std::string_view charset)
{
    constexpr std::array<std::string_view, 12> charsets{"", "UTF-8", "UTF8", "ISO-8859-1", "ISO8859-1", "LATIN1",
        "WINDOWS-1252", "CP1252", "UTF-16", "UTF-16LE", "UTF-16BE", "UTF-32"};
    return std::ranges::any_of(
        charsets, [charset](std::string_view each) { return equalsIgnoringCase(each, charset); });
}

std::optional<QStringConverter::Encoding> wideEncoding(const QByteArray &data)
{
    const auto marked = QStringConverter::encodingForData(data);
    if (marked && *marked != QStringConverter::Utf8)
        return marked;
    if (marked || data.size() < 4)
        return std::nullopt;
    // A card begins with ASCII, so every other byte is zero.
    if (data[0] != 0 && data[1] == 0 && data[2] != 0 && data[3] == 0)
        return QStringConverter::Utf16LE;
    if (data[0] == 0 && data[1] != 0 && data[2] == 0 && data[3] != 0)
        return QStringConverter::Utf16BE;
    return std::nullopt;
}

/// Replaces what is half of a character. Lines end as for the reader of lines: carriage returns before a line feed
/// belong to it, any other ends a line.
void replaceHalves(QString &text, std::vector<qint64> *brokenLines)
{
    qint64 line = 1;
    qint64 returns = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar unit = text.at(at);
        if (unit == u'\r') {
            ++returns;
            continue;
        }
        line += unit == u'\n' ? 1 : returns;
        returns = 0;
        if (!unit.isSurrogate())
            continue;
        if (unit.isHighSurrogate() && at + 1 < text.size() && text.at(at + 1).isLowSurrogate()) {
            ++at;
            continue;
        }
        text[at] = QChar::ReplacementCharacter;
        if (brokenLines && (brokenLines->empty() || brokenLines->back() != line))
            brokenLines->push_back(line);
    }
}

} // namespace

bool isAscii(std::string_view bytes)
{
    return std::ranges::all_of(bytes, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool isUtf8(std::string_view bytes)
{
    return simdjson::validate_utf8(bytes);
}

std::optional<QString> TextDecoder::decodedAs(std::string_view bytes, std::string_view charset)
{
    if (m_charset != charset) {
        m_charset = charset;
        m_decoder = QStringDecoder(m_charset.c_str(), QStringDecoder::Flag::Stateless);
    }
    if (!m_decoder.isValid())
        return std::nullopt;
    QString text = m_decoder.decode(QByteArrayView(bytes));
    // Some of ICU's converters put SUB for what they cannot convert and call it no error.
    constexpr char substitute = '\x1A';
    const bool hasSubstitutes = text.contains(QChar::fromLatin1(substitute)) && bytes.find(substitute) == bytes.npos;
    if (!m_decoder.hasError() && !hasSubstitutes)
        return text;
    m_charset.clear(); // a converter does not forget an error
    return std::nullopt;
}

void TextDecoder::appendDecoded(std::string_view bytes, std::string_view charset, std::string &out)
{
    if (const auto text = isToldFromBytes(charset) ? std::nullopt : decodedAs(bytes, charset))
        out += text->toStdString();
    else if (isUtf8(bytes))
        out += bytes;
    else
        out += decodedAs(bytes, "windows-1252").value_or(QString::fromLatin1(bytes)).toStdString();
}

QByteArray utf8FromWideData(const QByteArray &data, std::vector<qint64> *brokenLines)
{
    const auto encoding = wideEncoding(data);
    if (!encoding)
        return data;
    QString text = QStringDecoder(*encoding).decode(data);
    replaceHalves(text, brokenLines);
    return text.toUtf8();
}

void appendQuotedPrintable(std::string_view bytes, std::string &out)
{
    out.reserve(out.size() + bytes.size());
    bool afterReturn = false;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        char byte = bytes[at];
        if (byte == '=' && at + 2 < bytes.size()) {
            unsigned char code = 0;
            const char *digits = bytes.data() + at + 1;
            if (std::from_chars(digits, digits + 2, code, 16).ptr == digits + 2) {
                byte = static_cast<char>(code);
                at += 2;
            }
        }
        if (byte == '\r')
            out.push_back('\n');
        else if (byte != '\n' || !afterReturn)
            out.push_back(byte);
        afterReturn = byte == '\r';
    }
}

bool isBase64(std::string_view text)
{
    return std::ranges::all_of(text, [](char c) {
        const char upper = upperAscii(c);
        return (upper >= 'A' && upper <= 'Z') || (c >= '0' && c <= '9') || c == '+' || c == '/' || c == '='
            || isBlank(c);
    });
}

QString unescaped(std::string_view utf8)
{
    if (utf8.find('\\') == std::string_view::npos)
        return textOfUtf8(utf8);
    std::string text;
    text.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size(); ++at) {
        const char next = utf8[at] == '\\' && at + 1 < utf8.size() ? utf8[at + 1] : '\0';
        switch (next) {
        case 'n':
        case 'N':
            text.push_back('\n');
            ++at;
            break;
        case ',':
        case ';':
        case ':':
        case '\\':
            text.push_back(next);
            ++at;
            break;
        default:
            text.push_back(utf8[at]);
        }
    }
    return textOfUtf8(text);
}

std::string_view takePart(std::string_view &rest)
{
    for (std::size_t at = 0; at < rest.size(); ++at) {
        if (rest[at] == '\\') {
            ++at;
        } else if (rest[at] == ';') {
            const std::string_view part = rest.substr(0, at);
            rest.remove_prefix(at + 1);
            return part;
        }
    }
    return std::exchange(rest, {});
}

bool isList(std::string_view utf8)
{
    for (std::size_t at = 0; at < utf8.size(); ++at) {
        if (utf8[at] == '\\')
            ++at;
        else if (utf8[at] == ',')
            return true;
    }
    return false;
}

std::string escaped(QStringView text, Escapes escapes)
{
    const auto isPlain = [escapes](char c) {
        return (static_cast<unsigned char>(c) >= 0x20 && c != '\\'
                   && (escapes != Escapes::All || (c != ',' && c != ';')))
            || c == '\t';
    };
    const QByteArray utf8 = text.toUtf8();
    std::string out;
    for (const char *at = utf8.begin(), *end = utf8.end(); at != end;) {
        const char *run = std::find_if_not(at, end, isPlain);
        out.append(at, run);
        if (run == end)
            break;
        if (*run == '\r' || *run == '\n')
            out += "\\n";
        else if (static_cast<unsigned char>(*run) >= 0x20)
            (out += '\\') += *run;
        at = run + (*run == '\r' && run + 1 != end && run[1] == '\n' ? 2 : 1);
    }
    return out;
}

bool isSayable(QStringView text)
{
    return !text.isEmpty() && std::ranges::all_of(text, [](QChar c) { return c >= u' ' || c == u'\n' || c == u'\t'; });
}

bool breaksParam(QStringView text)
{
    return std::ranges::any_of(text, [](QChar c) { return c == u'"' || c < u' ' || c == QChar(0x7F); });
}

std::string_view takeScheme(std::string_view &text)
{
    const std::size_t end = text.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789+.-");
    if (end == std::string_view::npos || end == 0 || text[end] != ':')
        return {};
    const std::string_view scheme = text.substr(0, end);
    text.remove_prefix(end + 1);
    return scheme;
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}
