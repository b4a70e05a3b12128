// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/CardReader.h"

#include "contacts/cards/CardMap.h"
#include "contacts/cards/ExactValues.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace {

QString excerpt(std::string_view line)
{
    constexpr std::size_t most = 40;
    return u'"' % QString::fromUtf8(line.data(), static_cast<qsizetype>(std::min(line.size(), most))).simplified()
        % u'"';
}

bool isName(std::string_view name)
{
    return !name.empty() && name.front() != '#'
        && std::ranges::all_of(name, [](char c) { return static_cast<unsigned char>(c) > ' '; });
}

/// The line as it may stand in a kept line.
std::string normalised(const CardLine &line, std::string_view group)
{
    if (line.encoding != CardLine::Encoding::Base64)
        return normalisedLine(line, group, line.value);
    std::string value; // without the blanks that are left over from folding
    std::ranges::remove_copy_if(line.value, std::back_inserter(value), isBlank);
    return normalisedLine(line, group, value);
}

/// item1, item2 and so on only tie lines together; any other name was given by somebody.
bool isNumberedItem(std::string_view name)
{
    constexpr std::string_view word = "ITEM";
    return equalsIgnoringCase(name.substr(0, word.size()), word)
        && name.find_first_not_of("0123456789", word.size()) == std::string_view::npos && name.size() > word.size();
}

} // namespace

ImportedRecord CardReader::read(std::vector<CardLine> &lines, TextBuffers &texts, std::vector<ImportProblem> &problems,
    std::vector<LineMeaning> *meanings)
{
    m_draft.begin(lines, problems);
    m_draft.notesAllSources = meanings != nullptr;
    for (CardLine &line : lines) {
        decode(line, texts);
        if (line.area() == CardArea::Version)
            m_draft.isVersion4 = trimmed(line.value).starts_with('4');
    }
    readLines(lines);
    if (meanings) {
        meanings->assign(lines.size(), {});
        for (const CardDraft::Source &source : m_draft.sources)
            meanings->at(std::size_t(source.line - lines.data())) = {LineMeaning::Value, source.entry, {}};
        for (const Kept &each : m_kept) {
            if (each.kept.basis.isNull())
                meanings->at(std::size_t(each.line - lines.data())) = {LineMeaning::Kept, 0, each.kept.text};
        }
    }
    m_draft.record().setKeptLines(takeKeptLines());
    if (!m_draft.exactLines.empty() && !meanings)
        applyExactLines();
    ImportedRecord imported = m_draft.finish();
    if (m_draft.isGroup)
        imported.record = nullptr;
    return imported;
}

QString CardReader::formattedName() const
{
    return m_draft.formattedName ? unescaped(m_draft.formattedName->value) : QString();
}

void CardReader::decode(CardLine &line, TextBuffers &texts)
{
    if (line.encoding == CardLine::Encoding::Base64 || std::exchange(line.isDecoded, true))
        return;
    if (line.encoding == CardLine::Encoding::QuotedPrintable) {
        std::string &text = texts.emplace_back();
        appendQuotedPrintable(line.value, text);
        line.value = text;
    }
    constexpr char escape = '\x1B'; // begins another script in charsets that look like ASCII
    const bool isKnown = line.isUtf8 && line.encoding == CardLine::Encoding::Plain;
    const bool isUnchanged = line.charset.empty()
        ? isKnown || isUtf8(line.value)
        : isAscii(line.value) && line.value.find(escape) == std::string_view::npos;
    if (isUnchanged)
        return;
    std::string &text = texts.emplace_back();
    m_decoder.appendDecoded(line.value, line.charset, text);
    line.value = text;
}

bool CardReader::isReadable(const CardLine &line)
{
    if (!line.hasColon)
        m_draft.lose(line, QStringLiteral("no colon in ") % excerpt(line.value));
    else if (line.area() == CardArea::End)
        m_draft.lose(line, QStringLiteral("END of something that did not begin"));
    else if (!isName(line.name))
        m_draft.lose(line, QStringLiteral("no property name in ") % excerpt(line.name));
    else
        return true;
    return false;
}

void CardReader::readLines(const std::vector<CardLine> &lines)
{
    for (const CardLine &line : lines) {
        if (!isReadable(line) || (line.row && line.row->isLate))
            continue;
        if (!line.row || !line.row->read || !line.row->read(m_draft, line))
            keep(line);
    }
    for (const CardLine &line : lines) {
        if (!line.row)
            continue;
        const bool isLate = line.row->isLate && !line.row->read(m_draft, line);
        if (isLate || m_draft.isLeftover(line))
            keep(line);
    }
    takeNameFromFormattedName(m_draft);
    mergeAccounts(m_draft);
    m_draft.storeCollected();
    keepFormattedName();
    for (const CardDraft::Source &source : m_draft.sources)
        keepSource(source);
}

/// Keeps a line that the record has nothing of.
void CardReader::keep(const CardLine &line)
{
    if (CardDraft::Group *group = m_draft.groupOf(line))
        group->hasKeptLines = true;
    m_kept.push_back({&line, {textOfUtf8(normalised(line, line.group)), QString()}});
}

void CardReader::keepFormattedName()
{
    const CardLine *line = m_draft.formattedName;
    if (!line)
        return;
    const bool holdsMore = !line->hasOnlyValue() || !isFormattedName(m_draft.record(), line->value);
    if (holdsMore || !line->group.empty())
        keepSource({line, 0, holdsMore});
}

/// Keeps what a line that was read into the record holds beyond it. Only once all lines are read and their values are
/// in the record.
void CardReader::keepSource(const CardDraft::Source &source)
{
    const CardArea area = source.line->area();
    const bool isOneOfNotes = area == areaOf(kABNoteProperty) && m_draft.noteLines > 1;
    const CardDraft::Group *group = m_draft.groupOf(*source.line);
    const bool groupMatters = group && (group->hasKeptLines || !isNumberedItem(group->name));
    if (!source.holdsMore && !groupMatters && !isOneOfNotes)
        return;
    const std::string text = sourceLines(source, groupMatters ? group : nullptr);
    const std::string *plain = plainOf(area, source.entry);
    const bool mayHaveMore = isOneOfNotes || (area == areaOf(kABInstantMessageProperty) && m_draft.hasAccountLines);
    if (plain && text == *plain && !mayHaveMore)
        return;
    if (mayHaveMore) {
        const auto [place, isFirst] = m_joined.emplace(std::pair(area, source.entry), m_kept.size());
        if (!isFirst) {
            m_kept[place->second].kept.text += u'\n' + textOfUtf8(text);
            return;
        }
    }
    m_kept.push_back({source.line, {textOfUtf8(text), plain ? textOfUtf8(*plain) : QString()}});
}

/// The plain form of a value; nullptr where it has none.
const std::string *CardReader::plainOf(CardArea area, std::size_t entry)
{
    auto place = std::ranges::find(m_plain, area, &std::pair<CardArea, CardUnits>::first);
    if (place == m_plain.end()) {
        place = m_plain.insert(place, {area, {}});
        if (const CardRow *row = writtenRow(area))
            row->write(*row, {m_draft.uid, m_draft.record()}, place->second);
    }
    return entry < place->second.size() ? &place->second[entry] : nullptr;
}

std::string CardReader::sourceLines(const CardDraft::Source &source, const CardDraft::Group *group)
{
    const CardLine &line = *source.line;
    const CardDraft::Group *own = m_draft.groupOf(line);
    const bool usesLabel = own && own->label && own->labelUsed && isList(line.area());
    const bool usesCountry =
        own && own->countryCode && own->countryCodeUsed && line.area() == areaOf(kABAddressProperty);
    std::string_view name;
    if (group)
        name = group->name;
    else if (usesLabel || usesCountry)
        name = kUnitMark.substr(0, kUnitMark.size() - 1);
    std::string lines;
    if (line.area() == CardArea::Picture) {
        // The picture itself is in the record.
        const bool saysBase64 = line.encoding == CardLine::Encoding::Base64;
        lines = normalisedLine(line, name, {});
        if (!saysBase64)
            lines.insert(lines.size() - 1, ";ENCODING=b");
    } else {
        lines = normalised(line, name);
    }
    if (usesLabel)
        lines.append("\n").append(normalised(*own->label, name));
    if (usesCountry)
        lines.append("\n").append(normalised(*own->countryCode, name));
    return lines;
}

/// Lines of no value in file order, which may mean something; then the others in an order that does not depend on the
/// file, so that a card that is written and read again gives the same.
std::vector<KeptLine> CardReader::takeKeptLines()
{
    std::ranges::sort(m_kept, {}, [](const Kept &each) { // all lines stand in one array
        return std::tuple<bool, const QString &, const CardLine *>(
            !each.kept.basis.isNull(), each.kept.basis, each.line);
    });
    std::vector<KeptLine> lines;
    lines.reserve(m_kept.size());
    for (Kept &kept : m_kept) {
        if (kept.kept.text != kept.kept.basis) // else the line is as plain as its value
            lines.push_back(std::move(kept.kept));
    }
    m_kept.clear();
    m_joined.clear();
    m_plain.clear();
    return lines;
}

void CardReader::applyExactLines()
{
    CardValues values{m_draft.uid, std::move(m_draft.record())};
    for (const CardLine *line : m_draft.exactLines) {
        const bool makesSense = applyExactValue(
            paramValue(*line, "X-PROPERTY"), paramValue(*line, "X-SUM"), unescaped(line->value), values);
        if (!makesSense)
            m_draft.lose(*line, QStringLiteral("X-PEOPLENOOK-EXACT holds no value"));
    }
    m_draft.uid = values.uid;
    m_draft.record() = std::move(values.record);
    dropOutdatedLines();
}

/// A line kept for a value that an exact one has replaced would never be written again.
void CardReader::dropOutdatedLines()
{
    std::vector<KeptLine> kept = m_draft.record().keptLines();
    CardUnits units;
    for (const CardRow &row : cardRows()) {
        if (row.write)
            row.write(row, {m_draft.uid, m_draft.record()}, units);
    }
    const std::set<std::string> plain(units.begin(), units.end());
    std::erase_if(kept,
        [&plain](const KeptLine &line) { return !line.basis.isNull() && !plain.contains(line.basis.toStdString()); });
    m_draft.record().setKeptLines(std::move(kept));
}
