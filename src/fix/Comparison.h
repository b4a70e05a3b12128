// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <optional>
#include <vector>

/// Several contacts side by side, and the one that is made of them by choosing among their values.
///
/// At first everything is chosen, except values that say the same as a fuller one in their row. Of single values that
/// differ only one can be; the others become lines at the end of the note, such as "Company: Acme".
class Comparison
{
public:
    struct Cell
    {
        QString text; ///< null: the contact has no such value
        qsizetype entry = 0; ///< for a list, the place of the value in it
        std::optional<std::size_t> fuller; ///< the contact whose value in this row says the same, written more fully
        bool isChosen = false;
    };

    struct Row
    {
        std::optional<ABProperty> property; ///< nothing for the picture
        QString label; ///< of a list's values, as stored; null for none
        bool isSingle = false; ///< at most one cell is chosen; otherwise each by itself
        std::vector<Cell> cells; ///< one per contact
    };

    /// Needs at least one record. The first one is the one that the others are merged into.
    explicit Comparison(std::vector<PersonRecordPtr> records);

    /// The picture, then the properties in their order, as far as a contact has them.
    const std::vector<Row> &rows() const { return m_rows; }
    const std::vector<PersonRecordPtr> &records() const { return m_records; }

    /// A contact that is left out contributes nothing; where its single values were chosen, the first ones left are.
    void setIncluded(std::size_t contact, bool isIncluded);
    bool isIncluded(std::size_t contact) const { return m_included[contact]; }
    /// Whether the value goes into the result: it is chosen and its contact included.
    bool isTaken(const Row &row, std::size_t contact) const;
    /// For a value that is there. In a single row the one chosen before is given up.
    void setChosen(std::size_t row, std::size_t contact, bool isChosen);
    /// Chooses every value and every way of writing it; of single values the first.
    void keepEverything();

    /// The merged record; the first included contact's with what the others add.
    PersonRecord result() const;

private:
    void addRow(std::optional<ABProperty> property);
    void addListRows(ABProperty property);
    Row &rowForEntry(std::size_t firstRow, ABProperty property, const ABMultiValue::Entry &entry, std::size_t contact);
    ABMultiValue::Value valueOf(const Row &row, std::size_t contact) const;
    void choose(Row &row) const;
    void setSingle(PersonRecord &result, const Row &row) const;
    ABMultiValue mergedList(ABProperty property) const;
    QString mergedNote() const;

    std::vector<PersonRecordPtr> m_records;
    std::vector<bool> m_included;
    std::vector<Row> m_rows;
    bool m_keepsWriting = false; // single values that say the same in other letters get a line in the note, too
};
