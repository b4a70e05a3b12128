// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>

#include <string>
#include <unordered_map>
#include <vector>

/// How many letters were mistyped, left out, added or swapped with the next. Words of more than 64 letters only equal
/// themselves.
int typingErrors(std::string_view a, std::string_view b);

/// Unifies spellings of one sound in a text of small ASCII letters and digits.
std::string formOf(const std::string &ascii);

struct Word
{
    /// Small ASCII letters and digits: without accents, other scripts transliterated, spellings of one sound unified,
    /// so that "Müller", "Mueller" and "MULLER" have the same.
    std::string form;
    std::string ascii; ///< the same before spellings were unified; of several the longest
    quint64 sound; ///< equal if the consonants after the first letter sound alike: for looking up
    std::string initials; ///< how the sounds of the word and of its full names begin
    const std::vector<int> *nicknameRows = nullptr; ///< null: not in the table of first names
    quint64 letters = 0; ///< a bit for each that the form has
    int contacts = 0; ///< how many have it in a name, town or company
};

/// No more errors than a hurried writer makes in words of that length.
bool isTypingError(const Word &a, const Word &b);

/// The different words of an address book by number; words of one form have the same number.
class Vocabulary
{
public:
    std::vector<quint32> numbers(QStringView text);
    /// Of several words joined into one; 0 for none.
    quint32 joined(const std::vector<quint32> &words);
    void count(quint32 number) { ++m_words[number].contacts; }
    const Word &operator[](quint32 number) const { return m_words[number]; }

private:
    quint32 numberOf(const QString &written);
    quint32 numberOf(const std::string &form, const std::string &ascii);

    std::vector<Word> m_words{Word()};
    std::unordered_map<std::string, quint32> m_byForm;
    QHash<QString, quint32> m_byWriting; // since transliteration takes long
};
