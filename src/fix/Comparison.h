// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <optional>
#include <vector>

/// Several contacts side by side, and the contact merged from the chosen values.
///
/// Initially everything is chosen, except values that a fuller one in their row repeats. Of differing single values
/// only one can be chosen; the others become lines at the end of the note, such as "Company: Acme".
class Comparison
{
public:
    struct Cell
    {
        QString text; ///< null: no such value
        qsizetype entry = 0; ///< for a list, the index of the value
        std::optional<std::size_t> fuller; ///< the contact whose value in this row says the same more fully
        bool isChosen = false;
    };

    struct Row
    {
        std::optional<ABProperty> property; ///< nothing for the picture
        QString label; ///< of a list's values, as stored; null for none
        bool isSingle = false; ///< at most one cell is chosen; otherwise any
        std::vector<Cell> cells; ///< one per contact
    };

    /// At least one record. The others are merged into the first.
    explicit Comparison(std::vector<PersonRecordPtr> records);

    /// The picture, then the properties in order, if any contact has them.
    const std::vector<Row> &rows() const { return m_rows; }
    const std::vector<PersonRecordPtr> &records() const { return m_records; }

    /// An excluded contact contributes nothing; where its single values were chosen, the first remaining ones are.
    void setIncluded(std::size_t contact, bool isIncluded);
    bool isIncluded(std::size_t contact) const { return m_included[contact]; }
    /// Whether the value goes into the result: chosen, of an included contact.
    bool isTaken(const Row &row, std::size_t contact) const;
    /// For an existing value. A single row drops its previous choice.
    void setChosen(std::size_t row, std::size_t contact, bool isChosen);
    /// Chooses every value in every spelling; of single values the first.
    void keepEverything();

    /// The merged record: the first included contact's plus what the others add.
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
    bool m_keepsWriting = false; // single values spelled differently also get a line in the note
};
