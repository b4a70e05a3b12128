// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "likeness/NameMatch.h"

#include <algorithm>

namespace {

template <typename Value> bool haveCommon(const std::vector<Value> &a, const std::vector<Value> &b)
{
    return std::ranges::find_first_of(a, b) != a.end();
}

bool isSubset(const std::vector<quint32> &part, const std::vector<quint32> &all)
{
    return std::ranges::all_of(part, [&](quint32 word) { return std::ranges::find(all, word) != all.end(); });
}

/// Paul and Paula, Mario and Maria.
bool differByGender(std::string_view a, std::string_view b)
{
    const auto stem = [](std::string_view name) {
        return name.substr(
            0, name.size() - (std::string_view("aoei").find(name.back()) != std::string_view::npos ? 1 : 0));
    };
    return stem(a) == stem(b);
}

int points(const NameMatch &match)
{
    const auto of = [](NameLikeness likeness) {
        return likeness <= NameLikeness::Unlike ? -2 : static_cast<int>(likeness);
    };
    return of(match.given) + of(match.family);
}

class Matcher
{
public:
    Matcher(const NameTraits &a, const NameTraits &b, const BookTraits &book) : m_a(a), m_b(b), m_book(book) { }

    /// By the best of all readings, since fields may be exchanged or hold a whole name.
    NameMatch match() const
    {
        NameMatch best{.given = NameLikeness::Differs, .family = NameLikeness::Differs};
        const int good = 2 * static_cast<int>(NameLikeness::Mistyped);
        for (const NameReading &a : m_a.readings) {
            for (const NameReading &b : m_b.readings) {
                if (isMisread(m_a, a, b) || isMisread(m_b, b, a))
                    continue;
                // Either may be the one that is exchanged, which matters to nicknames.
                keepBetter(matchParts(a.given, a.family, b.given, b.family), best);
                if (points(best) < good) {
                    keepExchanged(matchParts(a.given, a.family, b.family, b.given), best);
                    keepExchanged(matchParts(a.family, a.given, b.given, b.family), best);
                }
            }
        }
        if (points(best) < good && haveSameLetters())
            best.given = best.family = NameLikeness::Same;
        best.middle = middleNames();
        return best;
    }

private:
    static void keepBetter(const NameMatch &match, NameMatch &best)
    {
        if (points(match) > points(best))
            best = match;
    }

    static void keepExchanged(NameMatch match, NameMatch &best)
    {
        match.isSwapped = true;
        if (std::max(match.given, match.family) > NameLikeness::Missing)
            keepBetter(match, best);
    }

    /// Several words in one field are only one of the names where the other contact has all of them there.
    static bool isMisread(const NameTraits &name, const NameReading &reading, const NameReading &other)
    {
        return name.readings.size() > 1 && &reading == &name.readings.front()
            && !(
                isSubset(reading.given.words, other.given.words) && isSubset(reading.family.words, other.family.words));
    }

    NameMatch matchParts(const WordsOfName &givenA, const WordsOfName &familyA, const WordsOfName &givenB,
        const WordsOfName &familyB) const
    {
        NameMatch match;
        if (!givenA.words.empty() && !givenB.words.empty()) {
            const quint32 one = givenA.words.front();
            const quint32 other = givenB.words.front();
            match.given = givenName(one, other);
            if (givenA.whole != one || givenB.whole != other)
                match.given = std::max(match.given, givenName(givenA.whole, givenB.whole));
            if (match.given < NameLikeness::Nickname)
                match.given = std::max({match.given, otherName(m_a, givenA, other), otherName(m_b, givenB, one)});
            match.givenWord = commoner(one, other);
        }
        if (!familyA.words.empty() && !familyB.words.empty()) {
            match.family = familyName(familyA, familyB);
            if (match.family == NameLikeness::Differs
                && (haveCommon(familyA.words, m_b.maiden) || haveCommon(familyB.words, m_a.maiden)))
                match.family = NameLikeness::Mistyped;
            match.familyWord = commoner(familyA.whole, familyB.whole);
        }
        return match;
    }

    /// Such as those of a name in a script without blanks, or one that is split in different places.
    bool haveSameLetters() const
    {
        return m_a.letters != 0
            && (m_a.letters == m_b.letters || m_a.letters == m_b.lettersSwapped || m_a.lettersSwapped == m_b.letters);
    }

    const Word &word(quint32 number) const { return m_book.words[number]; }

    quint32 commoner(quint32 a, quint32 b) const { return word(a).contacts >= word(b).contacts ? a : b; }

    /// Too often to be a typing error.
    bool isFrequent(const Word &word) const
    {
        return word.contacts > 2 + static_cast<double>(m_book.contacts.size()) / 5000;
    }

    NameLikeness givenName(quint32 a, quint32 b) const
    {
        if (a == b)
            return NameLikeness::Same;
        const Word &first = word(a);
        const Word &second = word(b);
        if (first.nicknameRows && second.nicknameRows && haveCommon(*first.nicknameRows, *second.nicknameRows))
            return NameLikeness::Nickname;
        if ((first.nicknameRows && second.nicknameRows) || differByGender(first.ascii, second.ascii))
            return NameLikeness::Differs;
        const auto begins = [](const Word &brief, const Word &full) {
            constexpr std::size_t kLongestSyllable = 3; // as a letter of another script becomes; not Anna for Annalena
            return brief.ascii.size() <= kLongestSyllable && full.form.starts_with(brief.form);
        };
        if (begins(first, second) || begins(second, first))
            return NameLikeness::Initial;
        if (isFrequent(first) && isFrequent(second))
            return NameLikeness::Differs;
        return isTypingError(first, second) ? NameLikeness::Mistyped : NameLikeness::Unlike;
    }

    NameLikeness middleNames() const
    {
        const auto of = [](const NameTraits &name) {
            const std::vector<quint32> &given = name.readings.front().given.words;
            std::vector<quint32> middle(given.size() > 1 ? given.begin() + 1 : given.end(), given.end());
            middle.insert(middle.end(), name.middle.begin(), name.middle.end());
            return middle;
        };
        NameLikeness best = NameLikeness::Missing;
        if (m_a.readings.size() + m_b.readings.size() > 2)
            return best;
        for (const quint32 a : of(m_a)) {
            for (const quint32 b : of(m_b))
                best = best == NameLikeness::Missing ? givenName(a, b) : std::max(best, givenName(a, b));
        }
        return best;
    }

    /// Whether somebody is called so too.
    NameLikeness otherName(const NameTraits &name, const WordsOfName &given, quint32 called) const
    {
        const auto isSo = [&](quint32 other) {
            return word(other).form.size() > 1 && givenName(other, called) >= NameLikeness::Nickname;
        };
        if (std::ranges::any_of(name.nicknames, isSo))
            return NameLikeness::Nickname;
        const bool isSecond =
            std::any_of(given.words.begin() + 1, given.words.end(), isSo) || std::ranges::any_of(name.middle, isSo);
        return isSecond ? NameLikeness::Second : NameLikeness::Differs;
    }

    NameLikeness familyName(const WordsOfName &a, const WordsOfName &b) const
    {
        if (a.whole == b.whole)
            return NameLikeness::Same;
        if (isSubset(a.words, b.words) || isSubset(b.words, a.words))
            return NameLikeness::Mistyped;
        return isTypingError(word(a.whole), word(b.whole)) ? NameLikeness::Mistyped : NameLikeness::Differs;
    }

    const NameTraits &m_a;
    const NameTraits &m_b;
    const BookTraits &m_book;
};

} // namespace

NameMatch matchNames(const NameTraits &a, const NameTraits &b, const BookTraits &book)
{
    return Matcher(a, b, book).match();
}

bool mayShareName(const Traits &a, const Traits &b, const BookTraits &book)
{
    if (a.isCompany || b.isCompany)
        return a.isCompany && b.isCompany && a.company == b.company;
    const NameMatch match = matchNames(a.name, b.name, book);
    return match.given > NameLikeness::Unlike && match.family > NameLikeness::Unlike
        && (a.name.suffix == b.name.suffix || a.name.suffix == NameSuffix::None || b.name.suffix == NameSuffix::None);
}
