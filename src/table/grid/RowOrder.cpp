// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/grid/RowOrder.h"

#include <QCollator>
#include <QHashFunctions>

#include <algorithm>
#include <bit>
#include <deque>
#include <numeric>

namespace {

QCollator collatorFor(const QLocale &locale)
{
    // The C locale compares code units, whatever the collator is told.
    QCollator collator(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    collator.setNumericMode(true);
    return collator;
}

/// For each row the place of its value among all different values; equal places where values compare equal.
struct Ranks
{
    std::vector<int> ofRow;
    int count = 0; ///< also the rank of rows that have no value
};

constexpr int kNone = -1;

/// The values of a column as views of texts that stay in place; null views where a row has none.
class Column
{
public:
    Column(const PersonRows &rows, Field field)
    {
        // Rows, their texts and the characters lie all over the memory: each is asked for some rows ahead.
        constexpr std::size_t kAhead = 16;
        std::vector<const QString *> kept(rows.size());
        m_values.resize(rows.size());
        for (std::size_t i = 0; i < rows.size() + 2 * kAhead; ++i) {
            if (i < rows.size()) {
                kept[i] = rows[i]->keptText(field);
                __builtin_prefetch(kept[i]);
            }
            if (i >= kAhead && i - kAhead < rows.size() && kept[i - kAhead])
                __builtin_prefetch(kept[i - kAhead]->constData());
            if (i >= 2 * kAhead)
                m_values[i - 2 * kAhead] = valueOf(*rows[i - 2 * kAhead], kept[i - 2 * kAhead], field);
        }
    }

    const std::vector<QStringView> &values() const { return m_values; }

private:
    QStringView valueOf(const PersonDictionary &row, const QString *kept, Field field)
    {
        if (kept)
            return *kept;
        if (!row.contains(field))
            return {};
        return m_made.emplace_back(row.text(field));
    }

    std::vector<QStringView> m_values;
    std::deque<QString> m_made;
};

/// Numbers different texts in the order of their first appearance.
class TextNumbers
{
public:
    explicit TextNumbers(std::size_t textCount) : m_slots(std::bit_ceil(2 * textCount + 1), Slot{kNone, 0}) { }

    /// The text's number; count() before the call for one that was not met before.
    int numberOf(QStringView text)
    {
        const std::size_t hash = qHash(text);
        const std::size_t mask = m_slots.size() - 1;
        for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
            Slot &slot = m_slots[at];
            if (slot.number == kNone) {
                slot = {count(), static_cast<quint32>(hash >> kHashShift)};
                m_texts.push_back(text);
                return slot.number;
            }
            if (slot.hash == static_cast<quint32>(hash >> kHashShift)
                && m_texts[static_cast<std::size_t>(slot.number)] == text)
                return slot.number;
        }
    }
    int count() const { return static_cast<int>(m_texts.size()); }
    const std::vector<QStringView> &texts() const { return m_texts; }

private:
    static constexpr int kHashShift = 32; // the low half finds the slot
    struct Slot
    {
        int number;
        quint32 hash;
    };
    std::vector<Slot> m_slots;
    std::vector<QStringView> m_texts;
};

/// The same few thousand names make up most columns, so each different text is compared once, not each row.
Ranks ranksOf(const PersonRows &rows, Field field, const QCollator &collator)
{
    const Column column(rows, field);
    TextNumbers numbers(rows.size());
    Ranks ranks;
    ranks.ofRow.reserve(rows.size());
    for (const QStringView value : column.values())
        ranks.ofRow.push_back(value.isNull() ? kNone : numbers.numberOf(value));

    std::vector<std::pair<QCollatorSortKey, int>> keys;
    keys.reserve(numbers.texts().size());
    for (const QStringView text : numbers.texts())
        keys.emplace_back(collator.sortKey(text.toString()), static_cast<int>(keys.size()));
    std::ranges::sort(keys, [](const auto &a, const auto &b) { return a.first < b.first; });
    std::vector<int> rankOfNumber(keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (i > 0 && keys[i - 1].first < keys[i].first)
            ++ranks.count;
        rankOfNumber[static_cast<std::size_t>(keys[i].second)] = ranks.count;
    }
    ++ranks.count;
    for (int &number : ranks.ofRow)
        number = number == kNone ? ranks.count : rankOfNumber[static_cast<std::size_t>(number)];
    return ranks;
}

/// @p order, stably sorted by rank.
std::vector<int> sortedByRank(const std::vector<int> &order, const Ranks &ranks, Qt::SortOrder direction)
{
    const auto placeOf = [&](int row) {
        const int rank = ranks.ofRow[static_cast<std::size_t>(row)];
        const bool isReversed = direction == Qt::DescendingOrder && rank != ranks.count;
        return static_cast<std::size_t>(isReversed ? ranks.count - 1 - rank : rank);
    };
    std::vector<std::size_t> next(static_cast<std::size_t>(ranks.count) + 2);
    for (const int row : order)
        ++next[placeOf(row) + 1];
    std::partial_sum(next.begin(), next.end(), next.begin());
    std::vector<int> sorted(order.size());
    for (const int row : order)
        sorted[next[placeOf(row)]++] = row;
    return sorted;
}

} // namespace

std::vector<int> sortedOrder(
    const PersonRows &rows, const std::vector<SortDescriptor> &descriptors, const QLocale &locale)
{
    const QCollator collator = collatorFor(locale);
    std::vector<int> order(rows.size());
    std::iota(order.begin(), order.end(), 0);
    std::for_each(descriptors.rbegin(), descriptors.rend(), [&](const SortDescriptor &descriptor) {
        order = sortedByRank(order, ranksOf(rows, descriptor.field, collator), descriptor.order);
    });
    return order;
}
