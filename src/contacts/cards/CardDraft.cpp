// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/CardDraft.h"

#include "contacts/cards/CardMap.h"

namespace {

/// RFC 6868: how 4.0 writes what no parameter value may hold.
std::string withoutCarets(std::string_view text)
{
    std::string out;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char next = text[at] == '^' && at + 1 < text.size() ? text[at + 1] : '\0';
        const char meant = next == 'n' ? '\n' : next == '^' ? '^' : next == '\'' ? '"' : '\0';
        out.push_back(meant == '\0' ? text[at] : meant);
        if (meant != '\0')
            ++at;
    }
    return out;
}

} // namespace

void CardDraft::begin(std::span<const CardLine> lines, std::vector<ImportProblem> &problems)
{
    m_problems = &problems;
    m_record = std::make_shared<PersonRecord>();
    m_groups.clear();
    for (const CardLine &line : lines) {
        if (line.group.empty())
            continue;
        Group &group = m_groups.try_emplace(line.group, Group{line.group}).first->second;
        if (line.area() == CardArea::Label && !group.label)
            group.label = &line;
        else if (line.area() == CardArea::CountryCode && !group.countryCode)
            group.countryCode = &line;
    }
    sources.clear();
    for (auto &entries : m_entries)
        entries.clear();
    exactLines.clear();
    uid = note = QString();
    noteLines = 0;
    formattedName = nullptr;
    hasName = isGroup = isVersion4 = hasAccountLines = false;
}

bool CardDraft::isLeftover(const CardLine &line)
{
    if (line.area() != CardArea::Label && line.area() != CardArea::CountryCode)
        return false;
    const Group *group = groupOf(line);
    return !group
        || (line.area() == CardArea::Label ? group->label != &line || !group->labelUsed
                                           : group->countryCode != &line || !group->countryCodeUsed);
}

std::vector<ABMultiValue::Entry> &CardDraft::entries(ABProperty property)
{
    return m_entries.at(static_cast<std::size_t>(property) - static_cast<std::size_t>(kABEmailProperty));
}

void CardDraft::addSource(const CardLine &line, bool holdsMore, std::size_t entry)
{
    // A group may turn out to matter once all lines are read.
    if (holdsMore || notesAllSources || !line.group.empty())
        sources.push_back({&line, entry, holdsMore});
}

void CardDraft::addEntry(const CardLine &line, const QString *label, ABMultiValue::Value value, bool holdsMore)
{
    auto &list = entries(propertyOf(line.area()));
    addSource(line, holdsMore, list.size());
    list.push_back({labelOf(line, label), std::move(value)});
}

QString CardDraft::labelOf(const CardLine &line, const QString *other)
{
    Group *group = groupOf(line);
    if (group && group->label) {
        group->labelUsed = true;
        const std::string_view value = group->label->value;
        return value.find('\\') == std::string_view::npos ? pool.intern(value) : unescaped(value);
    }
    if (line.has(CardParam::GoogleLabel))
        return textOfUtf8(paramText(line, "X-GOOGLE-LABEL"));
    return other ? *other : QString();
}

std::string CardDraft::paramText(const CardLine &line, std::string_view name) const
{
    const std::string_view value = paramValue(line, name);
    std::string text;
    TextDecoder().appendDecoded(value, line.charset, text);
    return isVersion4 && text.find('^') != std::string::npos ? withoutCarets(text) : text;
}

void CardDraft::lose(const CardLine &line, const QString &reason)
{
    m_problems->push_back({ImportProblem::Kind::LostLine, line.number, reason});
}

void CardDraft::storeCollected()
{
    if (noteLines > 0)
        m_record->setText(kABNoteProperty, std::exchange(note, {}));
    for (std::size_t slot = 0; slot < kMultiCount; ++slot) {
        if (m_entries.at(slot).empty())
            continue;
        const auto property = static_cast<ABProperty>(slot + static_cast<std::size_t>(kABEmailProperty));
        m_record->setMultiValue(property, ABMultiValue(std::move(m_entries.at(slot))));
    }
}
