// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/HardContacts.h"

PersonRow rowOf(const FieldTexts &texts)
{
    auto row = std::make_shared<PersonDictionary>();
    for (const auto &[field, text] : texts) {
        if (field == Field::Birthday)
            row->setValue(QDate::fromString(text, Qt::ISODate), field);
        else
            row->setValue(text, field);
    }
    return row;
}

const QStringList &hardTexts()
{
    static const QStringList texts{QStringLiteral("=1+1"), QStringLiteral("@SUM(1)"), QStringLiteral("-5"),
        QStringLiteral("007"), QStringLiteral("+49 30 1234"), QStringLiteral("1.5E3"), QStringLiteral("2026-01-02"),
        QStringLiteral("\"quoted\", and 'more'; so"), QStringLiteral("<b>bold</b> &amp; ]]> -->"),
        QStringLiteral("two\nlines"), QStringLiteral("\n\nlines around\n"), QStringLiteral("tab\there"),
        QStringLiteral("  blanks  around  "), QStringLiteral("\U0001F600\U0001F469\u200D\U0001F4BB"),
        QStringLiteral("\u0645\u0631\u062D\u0628\u0627 \u05E9\u05DC\u05D5\u05DD"),
        QStringLiteral("Zoe\u0308 \u65E5\u672C\u8A9E \u00A0"), QStringLiteral("a_x0041_b _x"),
        QStringLiteral("back\\slash \\n")};
    return texts;
}

PersonRows hardRows()
{
    FieldTexts all;
    for (const FieldInfo &info : allFields())
        all.push_back({info.field, info.field == Field::Birthday ? QStringLiteral("1604-02-29") : info.label + u'!'});
    PersonRows rows{rowOf(all), rowOf({}), rowOf({{Field::FirstName, QStringLiteral("")}}),
        rowOf({{Field::Manager, QStringLiteral("Boss")}, {Field::LastName, QStringLiteral("Turned")},
            {Field::FirstName, QStringLiteral("Round")}})};
    for (const QString &text : hardTexts())
        rows.push_back(rowOf({{Field::FirstName, text}, {Field::Mobile, text}, {Field::Note, text}}));
    return rows;
}

PersonRow unholdableRow()
{
    QString note = QStringLiteral("long ").repeated(8'000); // 40,000
    note.replace(32'766, 2, QStringLiteral("\U0001F600")); // where a cell is cut
    const QString controls = QStringLiteral("a") + QChar(0x01) + QStringLiteral("b") + QChar(0x0B) + QStringLiteral("c")
        + QChar(0xD83D) + QStringLiteral("d") + QChar(0xDE00) + QChar(0xFFFE) + QChar(0xFFFF) + QChar(0x00)
        + QStringLiteral("e\r\nf\rg");
    return rowOf({{Field::FirstName, controls}, {Field::Note, note}});
}

QJsonArray gridOf(std::span<const ExportColumn> columns, std::span<const PersonRow> rows)
{
    QJsonArray labels;
    for (const ExportColumn &column : columns)
        labels.append(column.label);
    QJsonArray grid;
    grid.append(labels);
    for (const PersonRow &row : rows) {
        QJsonArray cells;
        for (const ExportColumn &column : columns) {
            const QString text = column.field ? row->text(*column.field) : QString();
            cells.append(text.isEmpty() ? QJsonValue() : QJsonValue(text));
        }
        grid.append(cells);
    }
    return grid;
}
