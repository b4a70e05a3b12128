// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringDecoder>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Upper case for ASCII; other bytes stay.
constexpr char upperAscii(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr bool equalsIgnoringCase(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && std::ranges::equal(a, b, {}, upperAscii, upperAscii);
}

bool isAscii(std::string_view bytes);
bool isUtf8(std::string_view bytes);

/// Turns the bytes of values into UTF-8. For one reader.
class TextDecoder
{
public:
    /// @p bytes as UTF-8, appended to @p out. An empty, unknown or wrong @p charset leaves UTF-8, where they are that,
    /// and then windows-1252, which takes any byte.
    void appendDecoded(std::string_view bytes, std::string_view charset, std::string &out);

private:
    std::optional<QString> decodedAs(std::string_view bytes, std::string_view charset);

    // Making a converter is expensive, and the lines of one file agree on their charset.
    QStringDecoder m_decoder;
    std::string m_charset;
};

/// Whole data in UTF-16 or UTF-32, told by a byte-order mark or by where its zero bytes are, as UTF-8; other data as it
/// is. Halves of characters become U+FFFD; @p brokenLines, which may be null, gets the lines that hold some, from 1 on.
QByteArray utf8FromWideData(const QByteArray &data, std::vector<qint64> *brokenLines = nullptr);

/// Appends what quoted-printable bytes stand for, line ends within as \n. Escapes that are none stay as text.
void appendQuotedPrintable(std::string_view bytes, std::string &out);

/// The bytes of base64 text; passes over whatever is not of the alphabet.
QByteArray bytesFromBase64(std::string_view text);
/// True when nothing but base64 is in @p text; blanks do not count.
bool isBase64(std::string_view text);

/// Text of valid UTF-8 with its backslash escapes resolved. Never null.
QString unescaped(std::string_view utf8);
/// Valid UTF-8 as a text, never null.
QString textFromUtf8(std::string_view utf8);
/// The text up to the next ';' that no backslash escapes, which is taken off @p rest together with that ';'.
std::string_view takePart(std::string_view &rest);
/// Whether a ',' that no backslash escapes divides @p utf8 into a list.
bool isList(std::string_view utf8);

/// How far a writer escapes: a URI keeps its commas and semicolons.
enum class Escapes { All, OnlyBackslashAndNewline };
/// @p text as the value of a line, in UTF-8. Line ends become \n; controls that no value may hold are left out.
std::string escaped(QStringView text, Escapes escapes = Escapes::All);

std::string_view trimmed(std::string_view text);
inline std::string_view view(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}
