// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/compare/ComparePage.h"

#include "app/compare/CompareText.h"
#include "fix/MergeContacts.h"

#include <algorithm>

namespace {

constexpr int kPictureSize = 28;
constexpr int kNarrowestColumn = 120; // cells have no buttons

GridCell *makeCell(
    const Comparison &comparison, const Comparison::Row &row, std::size_t contact, GridCell::Weight weight)
{
    auto *cell = new GridCell(nullptr, weight);
    const bool isGone = weight == GridCell::Weight::Gone;
    if (row.property)
        cell->setText(shownText(row, row.cells[contact]), isGone ? ComparePage::tr("left behind") : QString());
    else
        cell->setPicture(recordPicture(*comparison.records()[contact], kPictureSize, cell->devicePixelRatioF()));
    return cell;
}

bool isSameForAll(const Comparison::Row &row)
{
    return std::ranges::all_of(
        row.cells, [&](const Comparison::Cell &cell) { return cell.text == row.cells.front().text; });
}

} // namespace

ComparePage::ComparePage(QWidget *parent) : StickyGrid(parent)
{
    setNarrowestColumn(kNarrowestColumn);
    setFocusPolicy(Qt::StrongFocus); // the arrow keys scroll it
}

void ComparePage::showPeople(const QList<ABPersonPtr> &people)
{
    std::vector<PersonRecordPtr> records = recordsOf(people);
    const std::size_t merged = records.size();
    records.push_back(mergeContacts(people)->record());
    const Comparison comparison(records);
    Row heads{new GridCell, {}, new GridCell(nullptr, GridCell::Weight::Bold)};
    heads.result->setText(tr("After the Merge"));
    std::vector<std::vector<LostValue>> lost;
    for (std::size_t contact = 0; contact < merged; ++contact) {
        heads.cells.push_back(new GridCell(nullptr, GridCell::Weight::Bold));
        heads.cells.back()->setText(tr("%L1 · %2").arg(contact + 1).arg(nameOf(*records[contact])));
        lost.push_back(lostValues({records[contact]}, {records.back()}));
    }
    std::vector<Row> rows;
    for (const Comparison::Row &row : comparison.rows()) {
        if (isEmpty(row))
            continue;
        const auto weight = isSameForAll(row) ? GridCell::Weight::Quiet : GridCell::Weight::Plain;
        Row added{new GridCell(nullptr, GridCell::Weight::Quiet), {}, nullptr};
        added.title->setText(titleOf(row));
        for (std::size_t contact = 0; contact < merged; ++contact) {
            const bool isGone = isLost(row, contact, lost[contact]);
            added.cells.push_back(row.cells[contact].text.isNull()
                    ? nullptr
                    : makeCell(comparison, row, contact, isGone ? GridCell::Weight::Gone : weight));
        }
        added.result = row.cells[merged].text.isNull() ? new GridCell : makeCell(comparison, row, merged, weight);
        rows.push_back(std::move(added));
    }
    setHeads(heads);
    setRows(std::move(rows));
}
