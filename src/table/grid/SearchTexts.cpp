// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/grid/SearchTexts.h"

#include <algorithm>
#include <cstring>

namespace {

/// Most texts are ASCII, for which folding is one addition.
void appendFolded(std::string &texts, const QString &text)
{
    const std::size_t begin = texts.size();
    for (const QChar character : text) {
        const char16_t unit = character.unicode();
        if (unit >= 0x80) {
            texts.resize(begin);
            texts += text.toCaseFolded().toUtf8().toStdString();
            break;
        }
        texts += static_cast<char>(unit >= u'A' && unit <= u'Z' ? unit - u'A' + u'a' : unit);
    }
    texts += '\n';
}

/// A phone number without what people set between its digits.
QString digitsOf(const QString &number)
{
    QString digits;
    for (const QChar character : number) {
        if (character.isDigit())
            digits += QChar(u'0' + character.digitValue());
    }
    return digits;
}

/// Whether it could be a phone number or a part of one.
bool isNumber(const QString &word)
{
    return std::ranges::all_of(
        word, [](QChar character) { return character.isDigit() || QStringLiteral("+-./()").contains(character); });
}

bool holds(std::string_view text, const std::string &word)
{
    return memmem(text.data(), text.size(), word.data(), word.size()) != nullptr;
}

} // namespace

SearchTexts::SearchTexts(const PersonRows &rows, const std::stop_token &isSuperseded) : m_rows(rows)
{
    m_slices.reserve(rows.size());
    for (const PersonRow &row : rows) {
        if (isSuperseded.stop_requested())
            return;
        m_slices.push_back(add(*row));
    }
}

SearchTexts::Slice SearchTexts::add(const PersonDictionary &row)
{
    const std::size_t begin = m_texts.size();
    for (const auto &entry : row.entries()) {
        const QString text = row.text(entry);
        appendFolded(m_texts, text);
        if (fieldInfo(entry.field()).property != kABPhoneProperty)
            continue;
        if (const QString digits = digitsOf(text); digits != text)
            appendFolded(m_texts, digits);
    }
    return {begin, m_texts.size() - begin};
}

void SearchTexts::follow(const PersonRows &rows)
{
    if (rows == m_rows)
        return;
    std::vector<Slice> slices;
    slices.reserve(rows.size());
    for (std::size_t place = 0; place < rows.size(); ++place)
        slices.push_back(sliceOf(rows[place], place));
    m_slices = std::move(slices);
    m_rows = rows;
    m_known.clear();
}

/// Rows are made anew by each load, but not the records that they show.
SearchTexts::Slice SearchTexts::sliceOf(const PersonRow &row, std::size_t place)
{
    const PersonRecord *record = row->unchangedRecord();
    if (!record)
        return add(*row);
    if (place < m_rows.size() && record == m_rows[place]->unchangedRecord())
        return m_slices[place];
    if (m_known.empty()) {
        m_known.reserve(m_rows.size());
        for (std::size_t i = 0; i < m_rows.size(); ++i)
            m_known.emplace(m_rows[i]->unchangedRecord(), m_slices[i]);
    }
    const auto known = m_known.find(record);
    return known == m_known.end() ? add(*row) : known->second;
}

std::vector<int> SearchTexts::rowsWith(const QString &text) const
{
    struct Word
    {
        std::string text;
        std::string digits; // empty unless it may be a phone number
    };
    std::vector<Word> words;
    for (const QString &word : text.toCaseFolded().split(u' ', Qt::SkipEmptyParts)) {
        const QString digits = isNumber(word) ? digitsOf(word) : QString();
        words.push_back({word.toUtf8().toStdString(), digits.toStdString()});
    }
    std::vector<int> found;
    for (std::size_t row = 0; row < m_slices.size(); ++row) {
        const auto texts = std::string_view(m_texts).substr(m_slices[row].begin, m_slices[row].size);
        if (std::ranges::all_of(words, [texts](const Word &word) {
                return holds(texts, word.text) || (!word.digits.empty() && holds(texts, word.digits));
            }))
            found.push_back(static_cast<int>(row));
    }
    return found;
}
