// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "likeness/Words.h"

#include "likeness/Nicknames.h"

#include <unicode/translit.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cctype>
#include <memory>

namespace {

/// Small ASCII letters and digits; empty where ICU has no rules for them.
std::string asciiOf(const QString &word)
{
    // By the rules of the map makers first, which are nearest to how people write their names in passports.
    static const std::unique_ptr<icu::Transliterator> rules = [] {
        UErrorCode status = U_ZERO_ERROR;
        return std::unique_ptr<icu::Transliterator>(icu::Transliterator::createInstance(
            "Russian-Latin/BGN; Greek-Latin/UNGEGN; Any-Latin; Latin-ASCII", UTRANS_FORWARD, status));
    }();
    icu::UnicodeString text(reinterpret_cast<const char16_t *>(word.utf16()), static_cast<int32_t>(word.size()));
    const bool isAscii = std::ranges::all_of(word, [](QChar c) { return c.unicode() < 0x80; });
    if (rules && !isAscii)
        rules->transliterate(text);
    std::string ascii;
    for (int32_t i = 0; i < text.length(); ++i) {
        if (text[i] < 0x80 && std::isalnum(text[i]))
            ascii += static_cast<char>(std::tolower(text[i]));
    }
    return ascii;
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

bool isApostrophe(QChar c)
{
    return c == u'\'' || c == u'’' || c == u'`' || c == u'´';
}

} // namespace

/// Spellings that stand for each other in some language: ü and ue, å and aa, ph and f, y and i, single and double.
std::string formOf(const std::string &ascii)
{
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 6> kPairs{
        {{"ae", "a"}, {"oe", "o"}, {"ue", "u"}, {"ph", "f"}, {"ck", "k"}, {"ij", "i"}}};
    if (ascii == "ii" || ascii == "iii") // the second, the third
        return ascii;
    std::string form;
    for (std::size_t i = 0; i < ascii.size(); ++i) {
        const std::string_view next = std::string_view(ascii).substr(i, 2);
        const auto pair = std::ranges::find(kPairs, next, &std::pair<std::string_view, std::string_view>::first);
        char letter = ascii[i];
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

int typingErrors(std::string_view a, std::string_view b)
{
    constexpr std::size_t kLongest = 64;
    if (a == b)
        return 0;
    if (a.empty() || a.size() > kLongest || b.size() > kLongest)
        return static_cast<int>(std::max(a.size(), b.size()));
    // Hyyro's algorithm: a bit per letter of a tells how the table of distances between the beginnings of both changes
    // from one row to the next (up, down), and the loop goes through its columns.
    const std::uint64_t last = std::uint64_t{1} << (a.size() - 1);
    std::uint64_t up = ~std::uint64_t{0};
    std::uint64_t down = 0;
    std::uint64_t diagonal = 0;
    std::uint64_t placesBefore = 0;
    int errors = static_cast<int>(a.size());
    for (const char letter : b) {
        std::uint64_t places = 0;
        for (std::size_t i = 0; i < a.size(); ++i)
            places |= std::uint64_t{a[i] == letter} << i;
        const std::uint64_t swapped = ((~diagonal & places) << 1) & placesBefore;
        diagonal = (((places & up) + up) ^ up) | places | down | swapped;
        const std::uint64_t more = down | ~(diagonal | up);
        const std::uint64_t less = diagonal & up;
        errors += ((more & last) != 0 ? 1 : 0) - ((less & last) != 0 ? 1 : 0);
        up = (less << 1) | ~(diagonal | (more << 1) | 1);
        down = ((more << 1) | 1) & diagonal;
        placesBefore = places;
    }
    return errors;
}

bool isTypingError(const Word &a, const Word &b)
{
    constexpr int kMostOtherLetters = 6; // three errors; saves looking closer
    if (std::popcount(a.letters ^ b.letters) > kMostOtherLetters)
        return false;
    const auto isNear = [](std::string_view one, std::string_view other) {
        const std::size_t length = std::max(one.size(), other.size());
        const std::size_t allowed = length < 4 ? 0 : length < 7 ? 1 : length < 10 ? 2 : 3;
        if (length < 6 && one.substr(0, 1) != other.substr(0, 1))
            return false; // Hung and Dung
        return length - std::min(one.size(), other.size()) <= allowed
            && typingErrors(one, other) <= static_cast<int>(allowed);
    };
    return isNear(a.form, b.form) || isNear(a.ascii, b.ascii);
}

std::vector<quint32> Vocabulary::numbers(QStringView text)
{
    std::vector<quint32> numbers;
    QString word;
    const auto end = [&] {
        if (const quint32 number = numberOf(word); number != 0)
            numbers.push_back(number);
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
    return numbers;
}

quint32 Vocabulary::joined(const std::vector<quint32> &words)
{
    if (words.size() < 2)
        return words.empty() ? 0 : words.front();
    std::string form; // not what was read so far of other spellings, which depends on the order of the book
    for (const quint32 word : words)
        form += m_words[word].form;
    return numberOf(form, form);
}

quint32 Vocabulary::numberOf(const QString &written)
{
    const auto known = m_byWriting.constFind(written);
    if (known != m_byWriting.constEnd())
        return *known;
    const std::string ascii = asciiOf(written);
    return *m_byWriting.insert(written, numberOf(formOf(ascii), ascii));
}

quint32 Vocabulary::numberOf(const std::string &form, const std::string &ascii)
{
    if (form.empty())
        return 0;
    const auto [place, isNew] = m_byForm.try_emplace(form, static_cast<quint32>(m_words.size()));
    if (isNew) {
        const std::string sound = soundOf(form);
        Word word{form, ascii, std::hash<std::string>()(sound), sound.substr(0, 1), nicknameRows(form)};
        for (const char c : form)
            word.letters |= quint64{1} << (c & 63);
        for (std::size_t i = 0; word.nicknameRows && i < word.nicknameRows->size(); ++i)
            word.initials += soundOf(headOfNicknameRow((*word.nicknameRows)[i])).front();
        m_words.push_back(std::move(word));
    } else {
        std::string &kept = m_words[place->second].ascii;
        if (std::pair(kept.size(), ascii) < std::pair(ascii.size(), kept))
            kept = ascii;
    }
    return place->second;
}
