// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/Utf8Text.h"

#include <QByteArray>
#include <QStringDecoder>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Upper case for ASCII; other bytes are unchanged.
constexpr char upperAscii(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

constexpr bool equalsIgnoringCase(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && std::ranges::equal(a, b, {}, upperAscii, upperAscii);
}

/// Takes @p prefix off @p text; false if it does not begin with it.
constexpr bool takePrefix(std::string_view &text, std::string_view prefix)
{
    const bool has = text.starts_with(prefix);
    text.remove_prefix(has ? prefix.size() : 0);
    return has;
}

bool isAscii(std::string_view bytes);
bool isUtf8(std::string_view bytes);

/// Converts values to UTF-8. For one reader.
class TextDecoder
{
public:
    /// @p bytes as UTF-8, appended to @p out. An empty, unknown or wrong @p charset leaves UTF-8, where they are that,
    /// and then windows-1252, which takes any byte.
    void appendDecoded(std::string_view bytes, std::string_view charset, std::string &out);

private:
    std::optional<QString> decodedAs(std::string_view bytes, std::string_view charset);

    // Converters are expensive, and the lines of a file usually have the same charset.
    QStringDecoder m_decoder;
    std::string m_charset;
};

/// Converts data in UTF-16 or UTF-32, recognised by a byte-order mark or its zero bytes, to UTF-8; returns other data
/// unchanged. Unpaired surrogates become U+FFFD; @p brokenLines, if given, receives their lines, from 1.
QByteArray utf8FromWideData(const QByteArray &data, std::vector<qint64> *brokenLines = nullptr);

/// Appends decoded quoted-printable, with line ends as \n. Invalid escapes stay as text.
void appendQuotedPrintable(std::string_view bytes, std::string &out);

/// Whether @p text is only base64 and blanks.
bool isBase64(std::string_view text);

/// Decodes valid UTF-8 and resolves backslash escapes. Never null.
QString unescaped(std::string_view utf8);
/// Takes the text up to the next unescaped ';' off @p rest, with that ';'.
std::string_view takePart(std::string_view &rest);
/// Whether an unescaped ',' divides @p utf8 into a list.
bool isList(std::string_view utf8);

/// What to escape: a URI keeps commas and semicolons.
enum class Escapes { All, OnlyBackslashAndNewline };
/// @p text as the value of a line, in UTF-8. Line ends become \n; controls that no value may hold are left out.
std::string escaped(QStringView text, Escapes escapes = Escapes::All);

/// Whether a value can hold @p text, so that it is neither none nor changed by escaped().
bool isSayable(QStringView text);

/// Whether no parameter value can hold @p text, even in quotes.
bool breaksParam(QStringView text);

/// Takes "scheme:" off @p text, and returns it without the ':'; empty if there is none.
std::string_view takeScheme(std::string_view &text);
std::string_view trimmed(std::string_view text);
inline std::string_view view(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}
