// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/LineReader.h"
#include "contacts/model/ABProperties.h"

#include <set>
#include <vector>

/// The lines of one card as they stand in its text, each with the part of a person that it is about (its area).
class CardParts
{
public:
    // Areas beside the properties; the name's parts are one area, organisation and department another.
    static constexpr int kFormattedName = 100;
    static constexpr int kPhoto = 101;
    static constexpr int kExact = 102;
    static constexpr int kNone = 103;

    explicit CardParts(const QByteArray &card);

    /// False where there is no card, more than one, or a card within the card.
    bool isCard() const { return m_isCard; }
    static int areaOf(ABProperty property);
    static bool isList(int area);
    /// Whether two pieces of a card read as the same values.
    static bool readAlike(const QByteArray &a, const QByteArray &b);

    /// The lines between BEGIN and END.
    std::size_t size() const { return m_lines.size(); }
    int areaOf(std::size_t line) const { return m_lines[line].area; }
    bool hasArea(int area) const;
    /// With its folds and its line end, CR LF where the text ends without one.
    QByteArray rawLine(std::size_t line) const;
    /// In upper case; empty where the line has none.
    const std::string &groupOf(std::size_t line) const { return m_lines[line].group; }
    /// A label or a country code, which belongs to the other lines of its group.
    bool isCompanion(std::size_t line) const { return m_lines[line].isCompanion; }
    /// The same for all lines that read as the same entry of a list; null for a line that reads as none.
    QString keyOf(std::size_t line) const;
    /// Whether replacing the area's value replaces this line.
    bool holdsValue(std::size_t line) const;
    /// The line as it is kept beside a record that has no place for it; null where it is not.
    QString keptText(std::size_t line) const;
    /// The line with its companions, under a group that @p card does not have and from then on has.
    QByteArray textUnder(std::size_t line, CardParts &card) const;

private:
    struct Line
    {
        QByteArray raw;
        std::string group;
        CardName id = CardName::Other;
        int area = kNone;
        bool isCompanion = false;
    };

    QByteArray unit(std::size_t line) const;
    QByteArray freeGroup();

    std::vector<Line> m_lines;
    std::set<std::string> m_groups;
    bool m_isCard = false;
};
