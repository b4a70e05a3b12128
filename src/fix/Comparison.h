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
        QString text; ///< null: the contact has no such value
        qsizetype entry = 0; ///< for a list, the place of the value in it
        /// An included contact whose value in this row says the same, written more fully.
        std::optional<std::size_t> fuller = {};
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

    /// The picture, then the properties in their order, as far as a contact has them; the note always.
    const std::vector<Row> &rows() const { return m_rows; }
    const std::vector<PersonRecordPtr> &records() const { return m_records; }

    /// A contact that is left out contributes nothing. If its single values were chosen, the first remaining ones are
    /// now; if a value of it was the fuller one, the fullest remaining one is.
    void setIncluded(std::size_t contact, bool isIncluded);
    bool isIncluded(std::size_t contact) const { return m_included[contact]; }
    std::vector<std::size_t> included() const; ///< the contacts that are not left out
    /// Whether the value goes into the result: chosen, of an included contact.
    bool isTaken(const Row &row, std::size_t contact) const;
    /// For an existing value. A single row drops its previous choice.
    void setChosen(std::size_t row, std::size_t contact, bool isChosen);
    /// Whether single values that are not chosen go to the end of the note; they do at first.
    void setOthersToNote(bool goThere) { m_othersToNote = goThere; }
    bool othersToNote() const { return m_othersToNote; }
    /// Chooses every value in every spelling, and the first of single values, of the contacts not left out.
    void keepEverything();

    /// The merged record: the first included contact's plus what the others add.
    PersonRecord result() const;

private:
    void addRow(std::optional<ABProperty> property);
    void addListRows(ABProperty property);
    Row &rowForEntry(std::size_t firstRow, ABProperty property, const ABMultiValue::Entry &entry, std::size_t contact);
    ABMultiValue::Value valueOf(const Row &row, std::size_t contact) const;
    void findFuller(Row &row) const;
    void chooseFirst(Row &row) const;
    void setSingle(PersonRecord &result, const Row &row) const;
    ABMultiValue mergedList(ABProperty property) const;
    QString mergedNote() const;

    std::vector<PersonRecordPtr> m_records;
    std::vector<bool> m_included;
    std::vector<Row> m_rows;
    bool m_othersToNote = true;
    bool m_keepsWriting = false; // single values that only differ in spelling get a line in the note, too
};
