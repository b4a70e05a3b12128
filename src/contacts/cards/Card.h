// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/CardReader.h"

/// One card as its lines between BEGIN and END, each with what it says of a person.
class Card
{
public:
    /// A text that is empty has no lines.
    explicit Card(const QByteArray &text);

    /// False for a text of no card, of more than one, of a card within the card, in a wide encoding, or whose lines
    /// mean something else behind other lines.
    bool isOne() const { return m_isOne; }
    /// Their values are UTF-8.
    const std::vector<CardLine> &lines() const { return m_lines; }
    /// What they say together, exact values aside; empty for a card of no person.
    const PersonRecord &record() const { return *m_record; }

    const LineMeaning &meaningOf(const CardLine &line) const { return m_meanings[indexOf(line)]; }
    /// Whether replacing the value of its area, which is no list, replaces this line.
    bool holdsValue(const CardLine &line) const;
    /// The line with a value as it stands in the text.
    const CardLine &asWritten(const CardLine &line) const { return m_asWritten[indexOf(line)]; }
    /// With its folds and its line end, CR LF where the text ends without one.
    QByteArray rawLine(const CardLine &line) const;

private:
    std::size_t indexOf(const CardLine &line) const { return std::size_t(&line - m_lines.data()); }

    LineReader m_reader;
    std::vector<CardLine> m_lines;
    std::vector<CardLine> m_asWritten;
    std::vector<LineMeaning> m_meanings;
    PersonRecordPtr m_record;
    bool m_isOne = false;
};

/// What the lines say together. The record is null for a card of no person.
ImportedRecord recordOfLines(std::vector<CardLine> lines);

/// Appends an unfolded line with line ends, folded at 75 octets (RFC 2426 section 2.6, RFC 6350 section 3.2).
void appendFolded(QByteArray &out, std::string_view line);
