// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/KeptLineMaker.h"

#include "contacts/cards/CardFields.h"
#include "contacts/cards/PlainLines.h"
#include "contacts/cards/WordTable.h"

#include <algorithm>

namespace {

/// The value as it may stand in a kept line.
std::string_view keptValue(const ContentLine &line, std::string &memory)
{
    if (line.encoding != ContentLine::Encoding::Base64 || line.value.find_first_of(" \t") == std::string_view::npos)
        return line.value;
    // Blanks in base64 are left over from folding.
    std::ranges::copy_if(line.value, std::back_inserter(memory), [](char c) { return c != ' ' && c != '\t'; });
    return memory;
}

QString normalised(const ContentLine &line, std::string_view group)
{
    std::string memory;
    return normalisedLine(line, group, keptValue(line, memory));
}

/// item1, item2 and so on only tie lines together; any other name was given by somebody.
bool isNumberedItem(std::string_view name)
{
    constexpr std::string_view word = "ITEM";
    return equalsIgnoringCase(name.substr(0, word.size()), word)
        && name.find_first_not_of("0123456789", word.size()) == std::string_view::npos && name.size() > word.size();
}

} // namespace

/// Lines of no value in file order, which may mean something; then the others in an order that does not depend on the
/// file, so that a card that is written and read again gives the same.
bool KeptLineMaker::comesBefore(const Kept &a, const Kept &b)
{
    const bool hasBasis = !a.kept.basis.isNull();
    if (hasBasis != !b.kept.basis.isNull())
        return !hasBasis;
    if (hasBasis && a.kept.basis != b.kept.basis)
        return a.kept.basis < b.kept.basis;
    return a.line < b.line; // all lines stand in one array
}

void KeptLineMaker::keep(const ContentLine &line)
{
    if (CardGroups::Group *group = m_draft.groups().of(line))
        group->hasKeptLines = true;
    m_kept.push_back({&line, {normalised(line, line.group), QString()}});
}

void KeptLineMaker::keepSources()
{
    keepFormattedName();
    for (const CardDraft::Source &source : m_draft.sources())
        keepSource(source);
}

std::vector<KeptLine> KeptLineMaker::take()
{
    if (!std::ranges::is_sorted(m_kept, comesBefore))
        std::ranges::sort(m_kept, comesBefore);
    std::vector<KeptLine> lines;
    lines.reserve(m_kept.size());
    for (Kept &kept : m_kept) {
        if (kept.kept.text != kept.kept.basis) // else the line is as plain as its value
            lines.push_back(std::move(kept.kept));
    }
    m_kept.clear();
    m_accounts.clear();
    return lines;
}

void KeptLineMaker::keepFormattedName()
{
    const ContentLine *line = m_draft.formattedName;
    if (!line)
        return;
    const bool holdsMore =
        line->types != 0 || hasUnusualParams(*line) || !isFormattedName(m_draft.record(), line->value);
    const CardGroups::Group *group = m_draft.groups().of(*line);
    if (holdsMore || group)
        keepSource({line, ABProperty::Uid, 0, holdsMore});
}

void KeptLineMaker::keepSource(const CardDraft::Source &source)
{
    const CardGroups::Group *group = m_draft.groups().of(*source.line);
    const bool groupMatters = group && (group->hasKeptLines || !isNumberedItem(group->name));
    if (!source.holdsMore && !groupMatters)
        return;
    const QString text = sourceLines(source, groupMatters ? group : nullptr);
    if (joinToAccount(source, text))
        return;
    m_kept.push_back({source.line, {text, plainLines(source)}});
}

QString KeptLineMaker::plainLines(const CardDraft::Source &source) const
{
    const PersonRecord &record = m_draft.record();
    switch (source.line->id) {
    case CardName::Name:
        return plainName(record);
    case CardName::FormattedName:
        return plainFormattedName(record);
    case CardName::Organization:
        return plainOrganization(record);
    case CardName::Text:
        return plainText(textProperty(source.line->name), record);
    case CardName::Birthday:
    case CardName::OtherBirthday:
        return plainBirthday(record);
    case CardName::Uid:
        return plainUid(m_draft.uid);
    case CardName::ShowAs:
    case CardName::Kind:
        return plainCompany(record);
    case CardName::Photo:
        return plainPhoto(record);
    default:
        return plainEntry(source.property, record.multiValue(source.property)->entries()[source.entry]);
    }
}

QString KeptLineMaker::sourceLines(const CardDraft::Source &source, const CardGroups::Group *group) const
{
    const ContentLine &line = *source.line;
    const CardGroups::Group *own = m_draft.groups().of(line);
    const bool usesLabel = own && own->label && own->labelUsed && source.property != ABProperty::Uid;
    const bool usesCountry = own && own->countryCode && own->countryCodeUsed && source.property == ABProperty::Address;
    std::string name;
    if (group)
        name = group->name;
    else if (usesLabel || usesCountry)
        name.assign(kUnitGroup.data(), static_cast<std::size_t>(kUnitGroup.size()));
    QString lines;
    if (line.id == CardName::Photo) {
        // The picture itself is in the record.
        const bool saysBase64 = line.encoding == ContentLine::Encoding::Base64;
        lines = normalisedLine(line, name, {});
        if (!saysBase64)
            lines.insert(lines.size() - 1, QLatin1String(";ENCODING=b"));
    } else {
        lines = normalised(line, name);
    }
    if (usesLabel)
        lines += u'\n' + normalised(*own->label, name);
    if (usesCountry)
        lines += u'\n' + normalised(*own->countryCode, name);
    return lines;
}

bool KeptLineMaker::joinToAccount(const CardDraft::Source &source, const QString &text)
{
    if (source.property != ABProperty::InstantMessage)
        return false;
    const auto place =
        std::ranges::lower_bound(m_accounts, source.entry, {}, &std::pair<std::size_t, std::size_t>::first);
    if (place != m_accounts.end() && place->first == source.entry) {
        KeptLine &first = m_kept[place->second].kept;
        first.text += u'\n' + text;
        return true;
    }
    m_accounts.emplace(place, source.entry, m_kept.size());
    return false;
}
