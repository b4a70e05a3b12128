// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "likeness/NameMatch.h"

#include <algorithm>

namespace {

template <typename Value> bool haveCommon(const std::vector<Value> &a, const std::vector<Value> &b)
{
    return std::ranges::find_first_of(a, b) != a.end();
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

int points(NameLikeness likeness)
{
    return likeness <= NameLikeness::Unlike ? -2 : static_cast<int>(likeness);
}

int points(const NameMatch &match)
{
    return points(match.given) + points(match.family);
}

class Matcher
{
public:
    explicit Matcher(const BookTraits &book) : m_book(book) { }

    NameMatch match(const NameTraits &a, const NameTraits &b) const
    {
        NameMatch best = match(a, a.given, a.family, b, b.given, b.family);
        if (points(best) < 2 * points(NameLikeness::Mistyped)) {
            // Either may be the one that is wrong, which matters to nicknames.
            for (NameMatch swapped : {match(a, a.given, a.family, b, b.family, b.given),
                     match(a, a.family, a.given, b, b.given, b.family)}) {
                swapped.isSwapped = true;
                if (points(swapped) > points(best))
                    best = swapped;
            }
            if (!best.isSwapped && haveSameWhole(a, b)) // split in different places
                best.given = best.family = NameLikeness::Same;
        }
        if (!a.middle.empty() && !b.middle.empty())
            best.middle = givenName(a.middle.front(), b.middle.front());
        return best;
    }

private:
    NameMatch match(const NameTraits &a, const NamePart &givenA, const NamePart &familyA, const NameTraits &b,
        const NamePart &givenB, const NamePart &familyB) const
    {
        NameMatch match;
        if (!givenA.words.empty() && !givenB.words.empty()) {
            match.given =
                std::max({givenName(givenA.whole, givenB.whole), givenName(givenA.words.front(), givenB.words.front()),
                    otherName(a, givenA, givenB.words.front()), otherName(b, givenB, givenA.words.front())});
            match.givenWord = commoner(givenA.words.front(), givenB.words.front());
        }
        if (!familyA.words.empty() && !familyB.words.empty()) {
            match.family = familyName(familyA, familyB);
            if (match.family == NameLikeness::Differs
                && (haveCommon(familyA.words, b.maiden) || haveCommon(familyB.words, a.maiden)))
                match.family = NameLikeness::Mistyped;
            match.familyWord = commoner(familyA.whole, familyB.whole);
        }
        return match;
    }

    bool haveSameWhole(const NameTraits &a, const NameTraits &b) const
    {
        const std::string &givenA = form(a.given.whole);
        const std::string &familyA = form(a.family.whole);
        const std::string &givenB = form(b.given.whole);
        const std::string &familyB = form(b.family.whole);
        const std::size_t length = givenA.size() + familyA.size();
        return length > 0 && length == givenB.size() + familyB.size()
            && (givenA + familyA == givenB + familyB || givenA + familyA == familyB + givenB);
    }

    const std::string &form(quint32 word) const { return m_book.words.word(word).form; }

    quint32 commoner(quint32 a, quint32 b) const
    {
        return m_book.words.word(a).contacts >= m_book.words.word(b).contacts ? a : b;
    }

    /// Too often to be a typing error.
    bool isFrequent(const Vocabulary::Word &word) const
    {
        return word.contacts > 3 + static_cast<double>(m_book.contacts.size()) / 2000;
    }

    bool isKnown(const Vocabulary::Word &name) const { return name.nicknameRows || isFrequent(name); }

    NameLikeness givenName(quint32 a, quint32 b) const
    {
        if (a == b)
            return NameLikeness::Same;
        const Vocabulary::Word &first = m_book.words.word(a);
        const Vocabulary::Word &second = m_book.words.word(b);
        if (first.form.size() == 1 || second.form.size() == 1)
            return first.form.front() == second.form.front() ? NameLikeness::Initial : NameLikeness::Unlike;
        if (first.nicknameRows && second.nicknameRows && haveCommon(*first.nicknameRows, *second.nicknameRows))
            return NameLikeness::Nickname;
        if ((isKnown(first) && isKnown(second)) || differByGender(first.form, second.form))
            return NameLikeness::Differs;
        constexpr std::size_t kShortForm = 3; // as no table may have it
        const auto isShortFor = [](const std::string &name, const std::string &full) {
            return name.size() >= kShortForm && full.size() >= name.size() + 2 && full.starts_with(name);
        };
        const bool isAlike = isShortFor(first.form, second.form) || isShortFor(second.form, first.form)
            || isTypingError(first.form, second.form);
        return isAlike ? NameLikeness::Mistyped : NameLikeness::Unlike;
    }

    /// Whether somebody is called so too.
    NameLikeness otherName(const NameTraits &name, const NamePart &given, quint32 called) const
    {
        const auto isSo = [&](quint32 word) {
            return form(word).size() > 1 && givenName(word, called) >= NameLikeness::Nickname;
        };
        if (std::ranges::any_of(name.nicknames, isSo))
            return NameLikeness::Nickname;
        const bool isSecond =
            std::any_of(given.words.begin() + 1, given.words.end(), isSo) || std::ranges::any_of(name.middle, isSo);
        return isSecond ? NameLikeness::Second : NameLikeness::Differs;
    }

    NameLikeness familyName(const NamePart &a, const NamePart &b) const
    {
        if (a.whole == b.whole)
            return NameLikeness::Same;
        if (haveCommon(a.words, b.words))
            return NameLikeness::Mistyped;
        const std::string &one = form(a.whole);
        const std::string &other = form(b.whole);
        const bool areBothKnown = isFrequent(m_book.words.word(a.whole)) && isFrequent(m_book.words.word(b.whole));
        const bool isAlike = areBothKnown ? typingErrors(one, other) <= 1 : isTypingError(one, other);
        return isAlike ? NameLikeness::Mistyped : NameLikeness::Differs;
    }

    const BookTraits &m_book;
};

} // namespace

NameMatch matchNames(const NameTraits &a, const NameTraits &b, const BookTraits &book)
{
    return Matcher(book).match(a, b);
}
