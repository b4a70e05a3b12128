// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/CardReader.h"

/// One card as its lines between BEGIN and END, each with its meaning for a person.
class Card
{
public:
    /// An empty text has no lines.
    explicit Card(const QByteArray &text);

    /// False if the text is no card, several, or nested ones, in a wide encoding, or has lines that mean something else
    /// behind other lines.
    bool isOne() const { return m_isOne; }
    /// Their values are UTF-8.
    const std::vector<CardLine> &lines() const { return m_lines; }
    /// Their joint meaning without exact values; empty for a card that is no person.
    const PersonRecord &record() const { return *m_record; }

    const LineMeaning &meaningOf(const CardLine &line) const { return m_meanings[std::size_t(&line - m_lines.data())]; }
    /// Whether replacing the value of its area, which is no list, replaces this line.
    bool holdsValue(const CardLine &line) const;
    /// With folds and line end; CR LF if the text ends without one.
    QByteArray rawLine(const CardLine &line) const;

private:
    LineReader m_reader;
    std::vector<CardLine> m_lines;
    std::vector<LineMeaning> m_meanings;
    PersonRecordPtr m_record;
    bool m_isOne = false;
};

/// The joint meaning of the lines. The record is null for a card that is no person.
ImportedRecord recordOfLines(std::vector<CardLine> lines);

/// Appends an unfolded line with line ends, folded at 75 octets (RFC 2426 section 2.6, RFC 6350 section 3.2).
void appendFolded(QByteArray &out, std::string_view line);
