// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/CardReader.h"

#include "contacts/cards/CardFields.h"
#include "contacts/cards/ExactValues.h"
#include "contacts/cards/PlainLines.h"

#include <QSet>

namespace {

using FieldReader = bool (*)(CardDraft &draft, const ContentLine &line);

bool passOver(CardDraft &, const ContentLine &)
{
    return true;
}

struct FieldRow
{
    CardName name;
    FieldReader read;
};

/// Names that are not here have no place in a record. Labels and country codes are read with the value they belong to;
/// birthdays outside the standard only after all others.
constexpr auto kFieldReaders = [] {
    std::array<FieldReader, static_cast<std::size_t>(CardName::Count)> readers{};
    for (const auto &[name, read] : {
             FieldRow{CardName::Version, passOver},
             FieldRow{CardName::Name, readName},
             FieldRow{CardName::FormattedName, readFormattedName},
             FieldRow{CardName::Organization, readOrganization},
             FieldRow{CardName::Text, readText},
             FieldRow{CardName::Birthday, readBirthday},
             FieldRow{CardName::OtherBirthday, passOver},
             FieldRow{CardName::Uid, readUid},
             FieldRow{CardName::ShowAs, readShowAs},
             FieldRow{CardName::Kind, readKind},
             FieldRow{CardName::Photo, readPhoto},
             FieldRow{CardName::Exact, readExact},
             FieldRow{CardName::Email, readEmail},
             FieldRow{CardName::Phone, readPhone},
             FieldRow{CardName::Url, readUrl},
             FieldRow{CardName::Address, readAddress},
             FieldRow{CardName::Label, passOver},
             FieldRow{CardName::CountryCode, passOver},
             FieldRow{CardName::RelatedName, readRelatedName},
             FieldRow{CardName::Related, readRelated},
             FieldRow{CardName::Relation, readRelation},
             FieldRow{CardName::InstantMessage, readInstantMessage},
             FieldRow{CardName::Account, readAccount},
             FieldRow{CardName::SocialProfile, readSocialProfile},
             FieldRow{CardName::Twitter, readTwitter},
         })
        readers[static_cast<std::size_t>(name)] = read;
    return readers;
}();

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

} // namespace

ImportedRecord CardReader::read(
    std::vector<ContentLine> &lines, LineReader &texts, std::vector<ImportProblem> &problems)
{
    m_draft.begin(lines, problems);
    for (ContentLine &line : lines) {
        decode(line, texts);
        if (line.id == CardName::Version)
            m_draft.isVersion4 = trimmed(line.value).starts_with('4');
    }
    m_draft.record().setKeptLines(readLines(lines));
    if (!m_draft.exactLines.empty())
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

void CardReader::decode(ContentLine &line, LineReader &texts)
{
    if (line.encoding == ContentLine::Encoding::Base64)
        return;
    if (line.encoding == ContentLine::Encoding::QuotedPrintable) {
        std::string &text = texts.newText();
        appendQuotedPrintable(line.value, text);
        line.value = text;
    }
    constexpr char escape = '\x1B'; // begins another script in charsets that look like ASCII
    const bool isUnchanged = isAscii(line.value)
        ? line.charset.empty() || line.value.find(escape) == std::string_view::npos
        : line.charset.empty() && isUtf8(line.value);
    if (isUnchanged)
        return;
    std::string &text = texts.newText();
    m_decoder.appendDecoded(line.value, line.charset, text);
    line.value = text;
}

bool CardReader::isReadable(const ContentLine &line)
{
    if (!line.hasColon)
        m_draft.lose(line, QStringLiteral("no colon in ") % excerpt(line.value));
    else if (line.id == CardName::End)
        m_draft.lose(line, QStringLiteral("END of something that did not begin"));
    else if (!isName(line.name))
        m_draft.lose(line, QStringLiteral("no property name in ") % excerpt(line.name));
    else
        return true;
    return false;
}

std::vector<KeptLine> CardReader::readLines(const std::vector<ContentLine> &lines)
{
    for (const ContentLine &line : lines) {
        if (!isReadable(line))
            continue;
        const FieldReader reader = kFieldReaders.at(static_cast<std::size_t>(line.id));
        if (!reader || !reader(m_draft, line))
            m_kept.keep(line);
    }
    for (const ContentLine &line : lines) {
        if (line.id != CardName::OtherBirthday && line.id != CardName::Label && line.id != CardName::CountryCode)
            continue;
        const bool isLate = line.id == CardName::OtherBirthday && !readBirthday(m_draft, line);
        if (isLate || m_draft.groups().isLeftover(line))
            m_kept.keep(line);
    }
    takeNameFromFormattedName(m_draft);
    mergeAccounts(m_draft);
    m_draft.storeEntries();
    m_kept.keepSources();
    return m_kept.take();
}

void CardReader::applyExactLines()
{
    CardValues values{m_draft.uid, std::move(m_draft.record())};
    for (const ContentLine *line : m_draft.exactLines) {
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
    QSet<QString> plain{plainPhoto(m_draft.record())};
    for (const PlainUnit &unit : plainUnits(m_draft.uid, m_draft.record()))
        plain.insert(unit.lines);
    std::erase_if(kept, [&plain](const KeptLine &line) { return !line.basis.isNull() && !plain.contains(line.basis); });
    m_draft.record().setKeptLines(std::move(kept));
}
