// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// The words of a text in small ASCII letters and digits: accents are dropped, other scripts transliterated, and
/// spellings of one sound made one ("Müller", "Mueller" and "MULLER" are equal), so these are for comparing only.
std::vector<std::string> wordForms(QStringView text);

/// The consonants of a word form, those that sound alike made one, behind its first letter: for looking up, not for
/// comparing.
std::string soundOf(std::string_view form);

/// So many letters were typed wrongly, left out, added or swapped with the next. Words of more than 40 letters only
/// equal themselves.
int typingErrors(std::string_view a, std::string_view b);
/// No more errors than a hurried writer makes in words of that length.
bool isTypingError(std::string_view a, std::string_view b);

/// The different words of an address book by number, and how many contacts have each.
class Vocabulary
{
public:
    struct Word
    {
        std::string form;
        std::string sound;
        const std::vector<int> *nicknameRows = nullptr; ///< null: not in the table of names
        int contacts = 0;
    };

    /// 0 is the empty word.
    quint32 number(const std::string &form);
    const Word &word(quint32 number) const { return m_words[number]; }
    void count(quint32 number) { ++m_words[number].contacts; }

private:
    std::vector<Word> m_words{Word()};
    std::unordered_map<std::string, quint32> m_numbers;
};
