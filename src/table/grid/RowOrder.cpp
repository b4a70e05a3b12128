// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/grid/RowOrder.h"

#include <QCollator>

#include <algorithm>
#include <numeric>
#include <unordered_map>

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
    std::unordered_map<QString, int> rankOf;
    for (const PersonRow &row : rows) {
        if (const QString text = row->text(field); !text.isNull())
            rankOf.try_emplace(text);
    }
    std::vector<std::pair<QCollatorSortKey, int *>> keys;
    keys.reserve(rankOf.size());
    for (auto &[text, rank] : rankOf)
        keys.emplace_back(collator.sortKey(text), &rank);
    std::ranges::sort(keys, [](const auto &a, const auto &b) { return a.first < b.first; });
    Ranks ranks;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (i == 0 || keys[i - 1].first < keys[i].first)
            ++ranks.count;
        *keys[i].second = ranks.count - 1;
    }
    ranks.ofRow.reserve(rows.size());
    for (const PersonRow &row : rows) {
        const QString text = row->text(field);
        ranks.ofRow.push_back(text.isNull() ? ranks.count : rankOf.at(text));
    }
    return ranks;
}

void sortByRank(std::vector<int> &order, const Ranks &ranks, Qt::SortOrder direction)
{
    std::ranges::stable_sort(order, {}, [&](int row) {
        const int rank = ranks.ofRow[static_cast<std::size_t>(row)];
        const bool isReversed = direction == Qt::DescendingOrder && rank != ranks.count;
        return isReversed ? ranks.count - 1 - rank : rank;
    });
}

} // namespace

PersonRows sortedRows(const PersonRows &rows, const std::vector<SortDescriptor> &descriptors, const QLocale &locale)
{
    const QCollator collator = collatorFor(locale);
    std::vector<int> order(rows.size());
    std::iota(order.begin(), order.end(), 0);
    std::for_each(descriptors.rbegin(), descriptors.rend(), [&](const SortDescriptor &descriptor) {
        sortByRank(order, ranksOf(rows, descriptor.field, collator), descriptor.order);
    });
    PersonRows sorted;
    sorted.reserve(rows.size());
    for (const int row : order)
        sorted.push_back(rows[static_cast<std::size_t>(row)]);
    return sorted;
}
