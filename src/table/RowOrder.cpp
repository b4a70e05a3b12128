// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/RowOrder.h"

#include <QCollator>
#include <QHash>

#include <algorithm>
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

/// The same few thousand names make up most columns, so each different text is compared once, not each row.
Ranks ranksOf(const PersonRows &rows, Field field, const QCollator &collator)
{
    Ranks ranks;
    ranks.ofRow.reserve(rows.size());
    QHash<QString, int> places;
    places.reserve(static_cast<qsizetype>(rows.size()));
    std::vector<std::pair<QCollatorSortKey, int>> keys;
    constexpr int kNone = -1;
    for (const PersonRow &row : rows) {
        const QString text = row->text(field);
        if (text.isNull()) {
            ranks.ofRow.push_back(kNone);
            continue;
        }
        const auto place = places.constFind(text);
        if (place != places.constEnd()) {
            ranks.ofRow.push_back(*place);
            continue;
        }
        const int number = static_cast<int>(keys.size());
        places.insert(text, number);
        keys.emplace_back(collator.sortKey(text), number);
        ranks.ofRow.push_back(number);
    }
    std::ranges::sort(keys, [](const auto &a, const auto &b) { return a.first < b.first; });
    std::vector<int> rankOfPlace(keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (i > 0 && keys[i - 1].first < keys[i].first)
            ++ranks.count;
        rankOfPlace[static_cast<std::size_t>(keys[i].second)] = ranks.count;
    }
    ++ranks.count;
    for (int &place : ranks.ofRow)
        place = place == kNone ? ranks.count : rankOfPlace[static_cast<std::size_t>(place)];
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
    for (auto descriptor = descriptors.rbegin(); descriptor != descriptors.rend(); ++descriptor)
        order = sortedByRank(order, ranksOf(rows, descriptor->field, collator), descriptor->order);
    return order;
}
