// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/ExportColumns.h"

#include <array>
#include <bitset>

namespace {

constexpr std::array kAllFields{"First Name", "Last Name", "Home Email", "Work Email", "Other Email", "Mobile",
    "iPhone", "Main Phone", "Home Fax", "Work Fax", "Pager", "Work Phone", "Home Phone", "Home Street", "Home City",
    "Home Stat", "Home ZIP", "Home Country", "Home Country Code", "Work Street", "Work City", "Work State", "Work ZIP",
    "Work Country", "Work Country Code", "Other Street", "Other City", "Other State", "Other ZIP", "Other Country",
    "Other Country Code", "Home AIM", "Home QQ", "Home Google Talk", "Home Gadu-Gadu", "Home Jabber", "Home MSN",
    "Home Facebook", "Home Skype", "Home Yahoo", "Home ICQ", "Work AIM", "Work QQ", "Work Google Talk",
    "Work Gadu-Gadu", "Work Jabber", "Work MSN", "Work Facebook", "Work Skype", "Work Yahoo", "Work ICQ", "Other AIM",
    "Other QQ", "Other Google Talk", "Other Gadu-Gadu", "Other Jabber", "Other MSN", "Other Facebook", "Other Skype",
    "Other Yahoo", "Other ICQ", "Twitter", "Facebook", "Myspace", "Flickr", "LinkedIn", "Department", "Note", "Suffix",
    "Job Title", "Birthady", "Nickname", "Maiden Name", "Phonetic First Name", "Phonetic Last Name", "Middle Name",
    "Company", "FullName", "Home URL", "Work URL", "Home Page", "Father", "Mother", "Parent", "Brother", "Sister",
    "Child", "Friend", "Spouse", "Partner", "Assistant", "Manager"};
static_assert(std::size(kAllFields) == 92);

void appendColumnsOf(const PersonDictionary &row, std::bitset<kFieldCount> &seen, ExportColumns &columns)
{
    for (const auto &entry : row.entries()) {
        const auto bit = static_cast<std::size_t>(entry.field());
        if (!seen.test(bit))
            columns.push_back({fieldInfo(entry.field()).label, entry.field()});
        seen.set(bit);
    }
}

} // namespace

const ExportColumns &allFieldsColumns()
{
    static const ExportColumns columns = [] {
        ExportColumns made;
        for (const char *text : kAllFields) {
            const QString label = QString::fromLatin1(text);
            made.push_back({label, fieldLabelled(label)});
        }
        return made;
    }();
    return columns;
}

const ExportColumns &allFieldsColumnsWithoutPhonetic()
{
    static const ExportColumns columns = [] {
        ExportColumns made = allFieldsColumns();
        std::erase_if(made, [](const ExportColumn &column) {
            return column.field == Field::PhoneticFirstName || column.field == Field::PhoneticLastName;
        });
        return made;
    }();
    return columns;
}

ExportColumns columnsOf(std::span<const PersonRow> rows)
{
    std::bitset<kFieldCount> seen;
    ExportColumns columns;
    for (const PersonRow &row : rows)
        appendColumnsOf(*row, seen, columns);
    return columns;
}

ExportColumns columnsOf(const PersonDictionary &row)
{
    std::bitset<kFieldCount> seen;
    ExportColumns columns;
    appendColumnsOf(row, seen, columns);
    return columns;
}

QStringList labelsOf(const ExportColumns &columns)
{
    QStringList labels;
    for (const ExportColumn &column : columns)
        labels += column.label;
    return labels;
}

void RowTexts::read(const PersonDictionary &row)
{
    for (const Field field : m_present)
        m_texts[static_cast<std::size_t>(field)] = nullptr;
    m_present.clear();
    for (const auto &entry : row.entries()) {
        const QString *text = row.keptText(entry);
        if (!text) {
            QString &made = entry.field() == Field::Birthday ? m_birthday : m_fullName;
            made = row.text(entry);
            text = &made;
        }
        m_texts[static_cast<std::size_t>(entry.field())] = text;
        m_present.push_back(entry.field());
    }
}
