// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/CardParts.h"

#include "contacts/cards/PlainLines.h"
#include "contacts/cards/TextCoding.h"
#include "contacts/cards/VCardReader.h"
#include "contacts/cards/WordTable.h"

#include <array>

namespace {

struct AreaRow
{
    CardName name;
    int area;
};

constexpr int area(ABProperty property)
{
    return static_cast<int>(property);
}

constexpr auto kAreas = [] {
    std::array<int, static_cast<std::size_t>(CardName::Count)> areas{};
    areas.fill(CardParts::kNone);
    for (const auto &[name, value] : {
             AreaRow{CardName::Name, area(ABProperty::FirstName)},
             AreaRow{CardName::FormattedName, CardParts::kFormattedName},
             AreaRow{CardName::Organization, area(ABProperty::Organization)},
             AreaRow{CardName::Birthday, area(ABProperty::Birthday)},
             AreaRow{CardName::OtherBirthday, area(ABProperty::Birthday)},
             AreaRow{CardName::ShowAs, area(ABProperty::Flags)},
             AreaRow{CardName::Kind, area(ABProperty::Flags)},
             AreaRow{CardName::Email, area(ABProperty::Email)},
             AreaRow{CardName::Phone, area(ABProperty::Phone)},
             AreaRow{CardName::Url, area(ABProperty::Urls)},
             AreaRow{CardName::Address, area(ABProperty::Address)},
             AreaRow{CardName::RelatedName, area(ABProperty::RelatedNames)},
             AreaRow{CardName::Related, area(ABProperty::RelatedNames)},
             AreaRow{CardName::Relation, area(ABProperty::RelatedNames)},
             AreaRow{CardName::InstantMessage, area(ABProperty::InstantMessage)},
             AreaRow{CardName::Account, area(ABProperty::InstantMessage)},
             AreaRow{CardName::SocialProfile, area(ABProperty::SocialProfile)},
             AreaRow{CardName::Twitter, area(ABProperty::SocialProfile)},
             AreaRow{CardName::Photo, CardParts::kPhoto},
             AreaRow{CardName::Exact, CardParts::kExact},
         })
        areas[static_cast<std::size_t>(name)] = value;
    return areas;
}();

std::string upper(std::string_view text)
{
    std::string result(text);
    std::ranges::transform(result, result.begin(), upperAscii);
    return result;
}

PersonRecord readLines(const QByteArray &lines)
{
    VCardReader reader("BEGIN:VCARD\r\nVERSION:3.0\r\n" + lines + "END:VCARD\r\n");
    const ImportedRecord imported = reader.next();
    return imported.record ? *imported.record : PersonRecord();
}

} // namespace

CardParts::CardParts(const QByteArray &card)
{
    const QByteArray text = utf8FromWideData(card);
    LineReader reader(text);
    ContentLine line;
    int begins = 0;
    int ends = 0;
    qint64 start = 0;
    while (reader.next(line)) {
        const qint64 end = reader.bytesRead();
        begins += line.id == CardName::Begin ? 1 : 0;
        ends += line.id == CardName::End ? 1 : 0;
        if (line.id != CardName::Begin && line.id != CardName::End) {
            int where = kAreas.at(static_cast<std::size_t>(line.id));
            if (line.id == CardName::Text)
                where = area(textProperty(line.name));
            const bool isCompanion = line.id == CardName::Label || line.id == CardName::CountryCode;
            m_lines.push_back({card.mid(start, end - start), upper(line.group), line.id, where, isCompanion});
            m_groups.insert(m_lines.back().group);
        }
        start = end;
        reader.releaseLines();
    }
    m_isCard = begins == 1 && ends == 1 && text.size() == card.size(); // else it was no UTF-8
}

int CardParts::areaOf(ABProperty property)
{
    switch (property) {
    case ABProperty::LastName:
    case ABProperty::MiddleName:
    case ABProperty::Title:
    case ABProperty::Suffix:
        return area(ABProperty::FirstName);
    case ABProperty::Department:
        return area(ABProperty::Organization);
    default:
        return area(property);
    }
}

bool CardParts::isList(int area)
{
    return area >= ::area(ABProperty::Email) && area <= ::area(ABProperty::SocialProfile);
}

bool CardParts::readAlike(const QByteArray &a, const QByteArray &b)
{
    return readLines(a).hasSameValues(readLines(b));
}

bool CardParts::hasArea(int area) const
{
    return std::ranges::find(m_lines, area, &Line::area) != m_lines.end();
}

QByteArray CardParts::rawLine(std::size_t line) const
{
    const QByteArray &raw = m_lines[line].raw;
    return raw.endsWith('\n') || raw.endsWith('\r') ? raw : raw + "\r\n";
}

QByteArray CardParts::unit(std::size_t line) const
{
    QByteArray lines = rawLine(line);
    if (m_lines[line].group.empty())
        return lines;
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        if (m_lines[i].isCompanion && m_lines[i].group == m_lines[line].group)
            lines += rawLine(i);
    }
    return lines;
}

QString CardParts::keyOf(std::size_t line) const
{
    const auto property = static_cast<ABProperty>(m_lines[line].area);
    const PersonRecord record = readLines(unit(line));
    const ABMultiValue *value = record.multiValue(property);
    return value && value->count() == 1 ? plainEntry(property, value->entries().front()) : QString();
}

bool CardParts::holdsValue(std::size_t line) const
{
    const CardName id = m_lines[line].id;
    if (id == CardName::Photo)
        return readLines(rawLine(line)).imageData() || m_lines[line].raw.contains("file://");
    if (id == CardName::Kind || id == CardName::ShowAs)
        return readLines(rawLine(line)).flags().has_value();
    return true;
}

QString CardParts::keptText(std::size_t line) const
{
    if (m_lines[line].isCompanion || m_lines[line].area == kExact)
        return {};
    const PersonRecord record = readLines(rawLine(line));
    const bool isKept = record.keptLines().size() == 1 && record.keptLines().front().basis.isNull();
    return isKept ? record.keptLines().front().text : QString();
}

QByteArray CardParts::freeGroup()
{
    for (int number = 1;; ++number) {
        QByteArray group = "item" + QByteArray::number(number);
        if (m_groups.insert(upper(group.toStdString())).second)
            return group;
    }
}

QByteArray CardParts::textUnder(std::size_t line, CardParts &card) const
{
    const std::string &group = m_lines[line].group;
    if (group.empty())
        return rawLine(line);
    const QByteArray other = card.freeGroup();
    const auto renamed = [&](std::size_t i) -> QByteArray { return other + rawLine(i).mid(qsizetype(group.size())); };
    QByteArray lines = renamed(line);
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        if (m_lines[i].isCompanion && m_lines[i].group == group)
            lines += renamed(i);
    }
    return lines;
}
