// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "likeness/WordForms.h"

#include "likeness/Nicknames.h"

#include <unicode/translit.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <memory>

namespace {

/// Other scripts in ASCII letters; empty where ICU has no rules for them.
std::string transliterated(const QString &word)
{
    // By the rules of the map makers first, which are nearest to how people write their names in passports.
    static const std::unique_ptr<icu::Transliterator> rules = [] {
        UErrorCode status = U_ZERO_ERROR;
        return std::unique_ptr<icu::Transliterator>(icu::Transliterator::createInstance(
            "Russian-Latin/BGN; Greek-Latin/UNGEGN; Any-Latin; Latin-ASCII; Lower", UTRANS_FORWARD, status));
    }();
    std::string ascii;
    if (!rules)
        return ascii;
    icu::UnicodeString text(reinterpret_cast<const char16_t *>(word.utf16()), static_cast<int32_t>(word.size()));
    rules->transliterate(text);
    for (int32_t i = 0; i < text.length(); ++i) {
        if (text[i] < 0x80 && std::isalnum(text[i]))
            ascii += static_cast<char>(text[i]);
    }
    return ascii;
}

constexpr struct
{
    char16_t letter;
    const char *ascii;
} kLetters[]{{u'ß', "ss"}, {u'ẞ', "ss"}, {u'æ', "ae"}, {u'Æ', "ae"}, {u'œ', "oe"}, {u'Œ', "oe"}, {u'ø', "o"},
    {u'Ø', "o"}, {u'ł', "l"}, {u'Ł', "l"}, {u'đ', "d"}, {u'Đ', "d"}, {u'ð', "d"}, {u'Ð', "d"}, {u'þ', "th"},
    {u'Þ', "th"}, {u'ı', "i"}};

/// False for a letter of another script.
bool appendAscii(std::string &out, QChar c)
{
    for (const auto &[letter, ascii] : kLetters) {
        if (c.unicode() == letter) {
            out += ascii;
            return true;
        }
    }
    while (c.unicode() >= 0x80) {
        const QString parts = c.decomposition();
        if (parts.isEmpty())
            return c.isMark();
        c = parts.front();
    }
    out += static_cast<char>(c.toLower().unicode());
    return true;
}

std::string asciiOf(const QString &word)
{
    std::string ascii;
    for (const QChar c : word) {
        if (c.unicode() < 0x80)
            ascii += static_cast<char>(c.toLower().unicode());
        else if (!appendAscii(ascii, c))
            return transliterated(word);
    }
    return ascii;
}

/// Spellings that stand for each other in some language: ü and ue, å and aa, ph and f, y and i, single and double.
std::string simplified(const std::string &word)
{
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 6> kPairs{
        {{"ae", "a"}, {"oe", "o"}, {"ue", "u"}, {"ph", "f"}, {"ck", "k"}, {"ij", "i"}}};
    std::string form;
    for (std::size_t i = 0; i < word.size(); ++i) {
        const std::string_view next = std::string_view(word).substr(i, 2);
        const auto pair = std::ranges::find(kPairs, next, &std::pair<std::string_view, std::string_view>::first);
        char letter = word[i];
        if (pair != kPairs.end()) {
            letter = pair->second.front();
            ++i;
        } else if (letter == 'y') {
            letter = 'i';
        }
        if (form.empty() || form.back() != letter || std::isdigit(letter))
            form += letter;
    }
    return form;
}

bool isApostrophe(QChar c)
{
    return c == u'\'' || c == u'’' || c == u'`' || c == u'´';
}

} // namespace

std::vector<std::string> wordForms(QStringView text)
{
    std::vector<std::string> forms;
    QString word;
    const auto end = [&] {
        if (std::string form = simplified(asciiOf(word)); !form.empty())
            forms.push_back(std::move(form));
        word.clear();
    };
    for (const QChar c : text) {
        if (c.isLetterOrNumber() || c.isMark() || c.isSurrogate())
            word += c;
        else if (!isApostrophe(c) && !word.isEmpty())
            end();
    }
    if (!word.isEmpty())
        end();
    return forms;
}

std::string soundOf(std::string_view form)
{
    // By letter: vowels, h and w are silent, the rest stands for its class.
    static constexpr std::string_view kClasses = ".bkt.fk...klmn.bkrst.ffs.s";
    std::string sound;
    for (const char c : form) {
        const bool isLetter = c >= 'a' && c <= 'z';
        const char heard = isLetter ? kClasses[static_cast<std::size_t>(c - 'a')] : c;
        if (sound.empty())
            sound += heard == '.' ? 'a' : heard;
        else if (heard != '.' && heard != sound.back())
            sound += heard;
    }
    return sound;
}

int typingErrors(std::string_view a, std::string_view b)
{
    constexpr std::size_t kLongest = 40;
    if (a.size() > kLongest || b.size() > kLongest)
        return a == b ? 0 : static_cast<int>(std::max(a.size(), b.size()));
    // Three rows of the table of distances between the beginnings of both.
    std::array<std::array<int, kLongest + 1>, 3> rows{};
    for (std::size_t j = 0; j <= b.size(); ++j)
        rows[0][j] = static_cast<int>(j);
    for (std::size_t i = 1; i <= a.size(); ++i) {
        auto &row = rows[i % 3];
        const auto &above = rows[(i + 2) % 3];
        row[0] = static_cast<int>(i);
        for (std::size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min({above[j] + 1, row[j - 1] + 1, above[j - 1] + (a[i - 1] != b[j - 1] ? 1 : 0)});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], rows[(i + 1) % 3][j - 2] + 1);
        }
    }
    return rows[a.size() % 3][b.size()];
}

bool isTypingError(std::string_view a, std::string_view b)
{
    const std::size_t length = std::max(a.size(), b.size());
    const int allowed = length < 4 ? 0 : length < 7 ? 1 : length < 10 ? 2 : 3;
    const std::size_t shorter = std::min(a.size(), b.size());
    return static_cast<int>(length - shorter) <= allowed && typingErrors(a, b) <= allowed;
}

quint32 Vocabulary::number(const std::string &form)
{
    if (form.empty())
        return 0;
    const auto [place, isNew] = m_numbers.try_emplace(form, static_cast<quint32>(m_words.size()));
    if (isNew)
        m_words.push_back({form, soundOf(form), nicknameRows(form), 0});
    return place->second;
}
