// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/CardDraft.h"

#include "contacts/cards/WordTable.h"

namespace {

constexpr std::size_t kUsualEntries = 2;

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

void CardDraft::begin(std::span<const ContentLine> lines, std::vector<ImportProblem> &problems)
{
    m_problems = &problems;
    m_record = std::make_shared<PersonRecord>();
    m_groups.assign(lines);
    m_sources.clear();
    for (auto &entries : m_entries)
        entries.clear();
    exactLines.clear();
    uid = QString();
    formattedName = nullptr;
    hasName = isGroup = isVersion4 = hasAccountLines = false;
}

ImportedRecord CardDraft::finish()
{
    return {std::exchange(uid, {}), std::move(m_record)};
}

std::vector<ABMultiValue::Entry> &CardDraft::entries(ABProperty property)
{
    return m_entries.at(static_cast<std::size_t>(property) - static_cast<std::size_t>(ABProperty::Email));
}

void CardDraft::addSource(const ContentLine &line, bool holdsMore)
{
    // A group may turn out to matter once all lines are read.
    if (holdsMore || !line.group.empty())
        m_sources.push_back({&line, ABProperty::Uid, 0, holdsMore});
}

void CardDraft::addEntry(
    const ContentLine &line, ABProperty property, const QString &label, ABMultiValue::Value value, bool holdsMore)
{
    auto &list = entries(property);
    if (holdsMore || !line.group.empty())
        m_sources.push_back({&line, property, list.size(), holdsMore});
    if (list.empty())
        list.reserve(kUsualEntries);
    list.push_back({label, std::move(value)});
}

QString CardDraft::labelOf(const ContentLine &line, const QString *other)
{
    CardGroups::Group *group = m_groups.of(line);
    if (group && group->label) {
        group->labelUsed = true;
        const std::string_view value = group->label->value;
        return value.find('\\') == std::string_view::npos ? m_pool.intern(value) : unescaped(value);
    }
    if ((line.paramBits & CardParam::GoogleLabel) != 0)
        return textFromUtf8(paramText(line, "X-GOOGLE-LABEL"));
    return other ? *other : QString();
}

std::string CardDraft::paramText(const ContentLine &line, std::string_view name) const
{
    const std::string_view value = paramValue(line, name);
    std::string text;
    TextDecoder().appendDecoded(value, line.charset, text);
    return isVersion4 && text.find('^') != std::string::npos ? withoutCarets(text) : text;
}

void CardDraft::lose(const ContentLine &line, const QString &reason)
{
    m_problems->push_back({ImportProblem::Kind::LostLine, line.number, reason});
}

void CardDraft::storeEntries()
{
    for (std::size_t slot = 0; slot < kMultiCount; ++slot) {
        if (m_entries.at(slot).empty())
            continue;
        const auto property = static_cast<ABProperty>(slot + static_cast<std::size_t>(ABProperty::Email));
        m_record->setMultiValue(property, ABMultiValue(std::exchange(m_entries.at(slot), {})));
    }
}
