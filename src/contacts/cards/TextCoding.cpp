// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/TextCoding.h"

#include "contacts/model/Utf8Text.h"

#include "contacts/cards/WordTable.h"

#include <cstring>

namespace {

/// What windows-1252 has at 0x80 to 0x9F; its five gaps stay the controls they are in ISO 8859-1.
constexpr std::array<char16_t, 32> kWindows1252{0x20AC, 0x81, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6,
    0x2030, 0x0160, 0x2039, 0x0152, 0x8D, 0x017D, 0x8F, 0x90, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D, 0x017E, 0x0178};

QString fromWindows1252(std::string_view bytes)
{
    QString text = QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
    for (QChar &c : text) {
        if (c.unicode() >= 0x80 && c.unicode() < 0xA0)
            c = QChar(kWindows1252.at(c.unicode() - 0x80U));
    }
    return text;
}

enum class CharsetKind { Named, Utf8, Windows1252, Unusable };

/// Programs that declare ISO-8859-1 write windows-1252, which only adds printable characters to it. A line of a file
/// that is read as bytes cannot be in two-byte units.
constexpr std::array kCharsetKinds{
    WordRow<CharsetKind>{"", CharsetKind::Utf8},
    WordRow<CharsetKind>{"UTF-8", CharsetKind::Utf8},
    WordRow<CharsetKind>{"UTF8", CharsetKind::Utf8},
    WordRow<CharsetKind>{"ISO-8859-1", CharsetKind::Windows1252},
    WordRow<CharsetKind>{"ISO8859-1", CharsetKind::Windows1252},
    WordRow<CharsetKind>{"LATIN1", CharsetKind::Windows1252},
    WordRow<CharsetKind>{"WINDOWS-1252", CharsetKind::Windows1252},
    WordRow<CharsetKind>{"CP1252", CharsetKind::Windows1252},
    WordRow<CharsetKind>{"UTF-16", CharsetKind::Unusable},
    WordRow<CharsetKind>{"UTF-16LE", CharsetKind::Unusable},
    WordRow<CharsetKind>{"UTF-16BE", CharsetKind::Unusable},
    WordRow<CharsetKind>{"UTF-32", CharsetKind::Unusable},
};

CharsetKind charsetKind(std::string_view charset)
{
    const auto *found = std::ranges::find_if(
        kCharsetKinds, [charset](const auto &row) { return equalsIgnoringCase(row.word, charset); });
    return found == kCharsetKinds.end() ? CharsetKind::Named : found->value;
}

void append(std::string &out, const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    out.append(utf8.constData(), static_cast<std::size_t>(utf8.size()));
}

int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    const char upper = upperAscii(c);
    return upper >= 'A' && upper <= 'F' ? upper - 'A' + 10 : -1;
}

/// The length of the sequence that begins with @p lead, and the least code point that needs it; 0 for no lead byte.
std::size_t sequenceLength(unsigned char lead, unsigned &least)
{
    if (lead >= 0xC2 && lead < 0xE0) {
        least = 0x80;
        return 2;
    }
    if (lead >= 0xE0 && lead < 0xF0) {
        least = 0x800;
        return 3;
    }
    least = 0x10000;
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

/// The length of the UTF-8 sequence at @p at, which is not ASCII; 0 when there is none.
std::size_t validSequence(std::string_view bytes, std::size_t at)
{
    unsigned least = 0;
    const auto lead = static_cast<unsigned char>(bytes[at]);
    const std::size_t length = sequenceLength(lead, least);
    if (length == 0 || at + length > bytes.size())
        return 0;
    unsigned codePoint = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(bytes[at + i]);
        if ((byte & 0xC0U) != 0x80)
            return 0;
        codePoint = codePoint << 6U | (byte & 0x3FU);
    }
    const bool surrogate = codePoint >= 0xD800 && codePoint < 0xE000;
    return codePoint >= least && codePoint < 0x110000 && !surrogate ? length : 0;
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

constexpr auto kBase64Alphabet = [] {
    std::array<bool, 256> table{};
    for (const char c : std::string_view(" \tABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/="))
        table[static_cast<unsigned char>(c)] = true; // NOLINT(cppcoreguidelines-pro-bounds-constant-array-index)
    return table;
}();

} // namespace

bool isAscii(std::string_view bytes)
{
    const char *at = bytes.data();
    const char *end = at + bytes.size();
    for (; end - at >= 8; at += 8) {
        quint64 block = 0;
        std::memcpy(&block, at, sizeof block);
        if ((block & 0x8080808080808080U) != 0)
            return false;
    }
    return std::all_of(at, end, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool isUtf8(std::string_view bytes)
{
    for (std::size_t at = 0; at < bytes.size();) {
        if (static_cast<unsigned char>(bytes[at]) < 0x80) {
            ++at;
            continue;
        }
        const std::size_t length = validSequence(bytes, at);
        if (length == 0)
            return false;
        at += length;
    }
    return true;
}

std::optional<QString> TextDecoder::decodedAs(std::string_view bytes, std::string_view charset)
{
    if (m_charset != charset) {
        m_charset = charset;
        m_decoder = QStringDecoder(m_charset.c_str(), QStringDecoder::Flag::Stateless);
    }
    if (!m_decoder.isValid())
        return std::nullopt;
    QString text = m_decoder.decode(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
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
    const CharsetKind kind = charsetKind(charset);
    if (kind == CharsetKind::Windows1252 && !isAscii(bytes)) {
        append(out, fromWindows1252(bytes));
        return;
    }
    if (kind == CharsetKind::Named) {
        if (const auto text = decodedAs(bytes, charset)) {
            append(out, *text);
            return;
        }
    }
    if (isUtf8(bytes))
        out.append(bytes);
    else
        append(out, fromWindows1252(bytes));
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
            const int high = hexValue(bytes[at + 1]);
            const int low = hexValue(bytes[at + 2]);
            if (high >= 0 && low >= 0) {
                byte = static_cast<char>(high * 16 + low);
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

QByteArray bytesFromBase64(std::string_view text)
{
    return QByteArray::fromBase64(QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size())));
}

bool isBase64(std::string_view text)
{
    return std::ranges::all_of(text, [](char c) { return kBase64Alphabet.at(static_cast<unsigned char>(c)); });
}

QString textFromUtf8(std::string_view utf8)
{
    return textOfUtf8(utf8);
}

QString unescaped(std::string_view utf8)
{
    if (utf8.find('\\') == std::string_view::npos)
        return textFromUtf8(utf8);
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
    return textFromUtf8(text);
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

QString escaped(QStringView text, Escapes escapes)
{
    QString out;
    out.reserve(text.size() + 8);
    for (qsizetype at = 0; at < text.size(); ++at) {
        const char16_t c = text[at].unicode();
        if (c == u'\r' || c == u'\n') {
            out += QLatin1String("\\n");
            if (c == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n')
                ++at;
        } else if (c == u'\\' || (escapes == Escapes::All && (c == u',' || c == u';'))) {
            out += u'\\';
            out += text[at];
        } else if (c >= 0x20 || c == u'\t') {
            out += text[at];
        }
    }
    return out;
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}
