// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/ContactText.h"

#include "export/formats/ExportColumns.h"

#include <algorithm>
#include <array>

namespace {

/// Where each field stands among the columns of all fields. Two of those have a label that no field has, so that their
/// cells stay blank; a document has no blank cells to show, and the fields they are named after take their place.
std::array<int, kFieldCount> makeRanks()
{
    std::array<int, kFieldCount> ranks;
    ranks.fill(kFieldCount * 2);
    int rank = 0;
    for (const ExportColumn &column : allFieldsColumns()) {
        std::optional<Field> field = column.field;
        if (column.label == u"Home Stat")
            field = fieldLabelled(u"Home State");
        else if (column.label == u"Birthady")
            field = Field::Birthday;
        if (field)
            ranks[std::size_t(*field)] = rank;
        ++rank;
    }
    return ranks;
}

int rankOf(Field field)
{
    static const std::array<int, kFieldCount> ranks = makeRanks();
    return ranks[std::size_t(field)];
}

} // namespace

QString contactHeading(const PersonDictionary &row)
{
    const QString names = row.text(Field::FirstName) + QChar::Space + row.text(Field::LastName);
    static constexpr std::array kOthers{Field::Company, Field::Nickname, Field::MiddleName, Field::HomeEmail,
        Field::WorkEmail, Field::OtherEmail, Field::Mobile, Field::MainPhone, Field::HomePhone, Field::WorkPhone};
    QString text = safeText(names).simplified();
    for (auto other = std::begin(kOthers); text.isEmpty() && other != std::end(kOthers); ++other)
        text = safeText(row.text(*other)).simplified();
    // FullName joins the names without a space, as the table has it, "(null)" for one that is missing.
    if (text.isEmpty())
        text = safeText(row.text(Field::FullName).remove(QStringLiteral("(null)"))).simplified();
    return text.isEmpty() ? QStringLiteral("No name") : text;
}

QString shortHeading(const PersonDictionary &row)
{
    constexpr qsizetype most = 60;
    const QString heading = contactHeading(row);
    return heading.size() <= most ? heading : safeText(heading.first(most - 1)) + u'…';
}

void noteFirst(TextRepairs &repairs, const PersonDictionary &row)
{
    if (repairs.firstContact.isEmpty() && !repairs.isEmpty())
        repairs.firstContact = shortHeading(row);
}

std::vector<Field> shownFields(const PersonDictionary &row, LineOrder order)
{
    std::vector<Field> fields;
    fields.reserve(row.entries().size());
    for (const PersonDictionary::Entry &entry : row.entries()) {
        if (!row.text(entry).isEmpty())
            fields.push_back(entry.field());
    }
    if (order == LineOrder::Fixed)
        std::stable_sort(fields.begin(), fields.end(), [](Field a, Field b) { return rankOf(a) < rankOf(b); });
    return fields;
}

QString contactLine(const PersonDictionary &row, Field field, TextRepairs *repairs)
{
    return fieldInfo(field).label + QStringLiteral(": ") + safeText(row.text(field), repairs);
}
