// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/CardPatch.h"

#include "contacts/cards/CardParts.h"
#include "contacts/cards/ExactValues.h"
#include "contacts/cards/LineSurplus.h"
#include "contacts/cards/PlainLines.h"
#include "contacts/cards/VCardReader.h"

#include <QSet>

#include <algorithm>
#include <map>
#include <optional>

namespace {

QSet<int> changedAreas(const PersonRecord &before, const PersonRecord &after)
{
    QSet<int> areas;
    for (const ABPropertyInfo &info : allProperties()) {
        if (info.property != ABProperty::Uid && before.value(info.property) != after.value(info.property))
            areas.insert(CardParts::areaOf(info.property));
    }
    if (plainFormattedName(before) != plainFormattedName(after))
        areas.insert(CardParts::kFormattedName);
    const QByteArray *left = before.imageData();
    const QByteArray *right = after.imageData();
    if (left && right ? *left != *right : left != right)
        areas.insert(CardParts::kPhoto);
    return areas;
}

/// The lines kept for no value that @p a has and @p b has not.
QStringList keptOnlyIn(const PersonRecord &a, const PersonRecord &b)
{
    QStringList texts;
    for (const KeptLine &line : a.keptLines()) {
        if (line.basis.isNull())
            texts += line.text;
    }
    for (const KeptLine &line : b.keptLines()) {
        if (line.basis.isNull())
            texts.removeOne(line.text);
    }
    return texts;
}

class Patcher
{
public:
    Patcher(const QByteArray &stored, const QByteArray &wanted, const CardChange &change)
        : m_old(stored), m_new(wanted), m_change(change), m_changed(changedAreas(change.before, change.after))
    { }

    QByteArray patch();

private:
    void chooseLines();
    bool isDisplayLeftAlone() const;
    void reuseLines(int area);
    void replaceLines(int area);
    QByteArray replacement(std::size_t newLine, std::size_t oldLine);
    void dropLabelOf(std::size_t address);
    void adjustFileAs();
    bool isReplaced(std::size_t line) const { return m_replaced.contains(line); }
    QByteArray assembled() const;
    QByteArray withExactValues(const QByteArray &card) const;

    CardParts m_old;
    CardParts m_new;
    const CardChange &m_change;
    QSet<int> m_changed;
    QSet<std::size_t> m_replaced; // old lines that stay out, or go to where their area is written
    QSet<std::size_t> m_reused; // those of them that are written there
    std::map<int, QByteArray> m_newLines; // by area
    std::map<std::size_t, QByteArray> m_rewritten; // old lines that say something else in their places
    QByteArray m_addedKeptLines;
};

/// What stands in a line beside its value does not go with the value.
QByteArray Patcher::replacement(std::size_t newLine, std::size_t oldLine)
{
    const QByteArray plain = m_new.textUnder(newLine, m_old);
    QByteArray whole = withSurplusOf(m_old.rawLine(oldLine), plain);
    return CardParts::readAlike(whole, plain) ? whole : plain;
}

/// Lists are compared entry by entry.
void Patcher::reuseLines(int area)
{
    std::map<QString, std::vector<std::size_t>> oldLines;
    for (std::size_t i = 0; i < m_old.size(); ++i) {
        if (m_old.areaOf(i) != area)
            continue;
        const QString key = m_old.keyOf(i);
        if (!key.isNull())
            oldLines[key].push_back(i);
        if (!key.isNull() || m_old.keptText(i).isNull())
            m_replaced.insert(i);
    }
    std::map<QString, int> wanted;
    for (std::size_t i = 0; i < m_new.size(); ++i) {
        if (m_new.areaOf(i) == area)
            ++wanted[m_new.keyOf(i)];
    }
    struct Piece
    {
        QByteArray text; // where it is an old line
        std::optional<std::size_t> newLine;
    };
    std::vector<Piece> pieces;
    for (std::size_t i = 0; i < m_new.size(); ++i) {
        if (m_new.areaOf(i) != area)
            continue;
        const QString key = m_new.keyOf(i);
        auto &same = oldLines[key];
        if (same.empty()) {
            if (!key.isNull() || m_new.keptText(i).isNull())
                pieces.push_back({{}, i});
            continue;
        }
        // Two lines may stand for one entry, such as an account in both of its forms: the last entry has the rest.
        const bool isLast = --wanted[key] == 0;
        const bool hasTwins = area == CardParts::areaOf(ABProperty::InstantMessage);
        const std::size_t count = isLast && hasTwins ? same.size() : 1;
        for (std::size_t taken = 0; taken < count; ++taken) {
            pieces.push_back({m_old.rawLine(same[taken]), {}});
            m_reused.insert(same[taken]);
        }
        same.erase(same.begin(), same.begin() + qsizetype(count));
    }
    std::vector<std::size_t> left;
    for (const auto &[key, lines] : oldLines)
        left.insert(left.end(), lines.begin(), lines.end());
    const bool isOneForOne = left.size() == 1
        && std::ranges::count_if(pieces, [](const Piece &each) { return each.newLine.has_value(); }) == 1;
    for (const auto &[text, newLine] : pieces) {
        m_newLines[area] += !newLine ? text
            : isOneForOne            ? replacement(*newLine, left.front())
                                     : m_new.textUnder(*newLine, m_old);
    }
    if (area == CardParts::areaOf(ABProperty::Address))
        std::ranges::for_each(left, [this](std::size_t line) { dropLabelOf(line); });
}

void Patcher::replaceLines(int area)
{
    std::vector<std::size_t> old;
    for (std::size_t i = 0; i < m_old.size(); ++i) {
        if (m_old.areaOf(i) == area && m_old.holdsValue(i))
            old.push_back(i);
    }
    m_replaced.unite(QSet<std::size_t>(old.begin(), old.end()));
    std::vector<std::size_t> now;
    for (std::size_t i = 0; i < m_new.size(); ++i) {
        if (m_new.areaOf(i) == area && m_new.holdsValue(i))
            now.push_back(i);
    }
    const bool isOneForOne = old.size() == 1 && now.size() == 1 && area != CardParts::kPhoto;
    for (const std::size_t line : now)
        m_newLines[area] += isOneForOne ? replacement(line, old.front()) : m_new.textUnder(line, m_old);
}

/// It spells an address out that is another one now.
void Patcher::dropLabelOf(std::size_t address)
{
    for (std::size_t i = 0; i < m_old.size(); ++i) {
        if (isLabelOfAddress(m_old.rawLine(i), m_old.rawLine(address)))
            m_replaced.insert(i);
    }
}

void Patcher::adjustFileAs()
{
    for (std::size_t i = 0; i < m_old.size(); ++i) {
        const QByteArray line = m_old.rawLine(i);
        if (!line.toUpper().startsWith("X-EVOLUTION-FILE-AS"))
            continue;
        const QByteArray follows = followingFileAs(line, m_change.before, m_change.after);
        if (!follows.isNull())
            m_rewritten[i] = follows;
    }
}

/// A name for display follows the parts of the name, or whatever it was made of; otherwise it is the user's own.
bool Patcher::isDisplayLeftAlone() const
{
    if (m_changed.contains(CardParts::areaOf(ABProperty::FirstName)))
        return false;
    for (std::size_t i = 0; i < m_old.size(); ++i) {
        const QByteArray value =
            m_old.areaOf(i) == CardParts::kFormattedName ? valueOfLine(m_old.rawLine(i)) : QByteArray();
        if (!value.isNull())
            return !isFormattedName(m_change.before, {value.constData(), std::size_t(value.size())});
    }
    return true;
}

void Patcher::chooseLines()
{
    if (isDisplayLeftAlone())
        m_changed.remove(CardParts::kFormattedName);
    for (const int area : m_changed) {
        if (CardParts::isList(area))
            reuseLines(area);
        else
            replaceLines(area);
    }
    if (m_changed.contains(CardParts::areaOf(ABProperty::FirstName))
        || m_changed.contains(CardParts::areaOf(ABProperty::Organization)))
        adjustFileAs();
    QStringList removed = keptOnlyIn(m_change.before, m_change.after);
    for (std::size_t i = 0; !removed.isEmpty() && i < m_old.size(); ++i) {
        if (!isReplaced(i) && removed.removeOne(m_old.keptText(i)))
            m_replaced.insert(i);
    }
    QStringList added = keptOnlyIn(m_change.after, m_change.before);
    for (std::size_t i = 0; !added.isEmpty() && i < m_new.size(); ++i) {
        if (added.removeOne(m_new.keptText(i)))
            m_addedKeptLines += m_new.rawLine(i);
    }
}

QByteArray Patcher::assembled() const
{
    QSet<std::string> living; // groups that still have a line with a value
    QSet<std::string> dying;
    for (std::size_t i = 0; i < m_old.size(); ++i) {
        if (m_old.groupOf(i).empty() || m_old.isCompanion(i))
            continue;
        (isReplaced(i) && !m_reused.contains(i) ? dying : living).insert(m_old.groupOf(i));
    }
    std::map<int, QByteArray> newLines = m_newLines;
    QByteArray card = "BEGIN:VCARD\r\n";
    for (std::size_t i = 0; i < m_old.size(); ++i) {
        const int area = m_old.areaOf(i);
        const auto rewritten = m_rewritten.find(i);
        if (rewritten != m_rewritten.end())
            card += rewritten->second;
        else if (isReplaced(i))
            card += std::exchange(newLines[area], {});
        else if (area == CardParts::kExact)
            continue;
        else if (!m_old.isCompanion(i) || living.contains(m_old.groupOf(i)) || !dying.contains(m_old.groupOf(i)))
            card += m_old.rawLine(i);
    }
    for (const auto &[area, lines] : newLines)
        card += lines;
    return card + m_addedKeptLines;
}

QByteArray Patcher::withExactValues(const QByteArray &card) const
{
    VCardReader reader(card + "END:VCARD\r\n");
    const ImportedRecord imported = reader.next();
    CardValues read{imported.uid, imported.record ? *imported.record : PersonRecord()};
    CardValues wanted{m_change.uid, m_change.after};
    // The picture may be kept elsewhere, and the uid is the store's.
    read.uid = wanted.uid;
    if (!m_changed.contains(CardParts::kPhoto)) {
        read.record.setImageData({});
        wanted.record.setImageData({});
    }
    QByteArray text = card;
    for (const QString &line : exactLines(wanted, read))
        text += line.toUtf8() + "\r\n";
    return text + "END:VCARD\r\n";
}

QByteArray Patcher::patch()
{
    if (!m_old.isCard())
        return {};
    chooseLines();
    return withExactValues(assembled());
}

} // namespace

QByteArray patchedCard(const QByteArray &stored, const QByteArray &wanted, const CardChange &change)
{
    return Patcher(stored, wanted, change).patch();
}
