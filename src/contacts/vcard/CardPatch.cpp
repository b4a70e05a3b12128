// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/vcard/CardPatch.h"

#include "contacts/vcard/CardParts.h"
#include "contacts/vcard/ExactValues.h"
#include "contacts/vcard/PlainLines.h"
#include "contacts/vcard/VCardReader.h"

#include <QSet>

#include <map>

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
    void reuseLines(int area);
    void addNewLine(int area, std::size_t line);
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
    QByteArray m_addedKeptLines;
};

void Patcher::addNewLine(int area, std::size_t line)
{
    m_newLines[area] += m_new.textUnder(line, m_old);
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
    for (std::size_t i = 0; i < m_new.size(); ++i) {
        if (m_new.areaOf(i) != area)
            continue;
        const QString key = m_new.keyOf(i);
        auto &same = oldLines[key];
        if (same.empty()) {
            if (!key.isNull() || m_new.keptText(i).isNull())
                addNewLine(area, i);
            continue;
        }
        // Two lines may stand for one entry, such as an account in both of its forms: the last entry has the rest.
        const bool isLast = --wanted[key] == 0;
        const bool hasTwins = area == CardParts::areaOf(ABProperty::InstantMessage);
        const std::size_t count = isLast && hasTwins ? same.size() : 1;
        for (std::size_t taken = 0; taken < count; ++taken) {
            m_newLines[area] += m_old.rawLine(same[taken]);
            m_reused.insert(same[taken]);
        }
        same.erase(same.begin(), same.begin() + qsizetype(count));
    }
}

void Patcher::chooseLines()
{
    const bool hasFormattedName = m_old.hasArea(CardParts::kFormattedName);
    if (!hasFormattedName && !m_changed.contains(CardParts::areaOf(ABProperty::FirstName)))
        m_changed.remove(CardParts::kFormattedName);
    for (const int area : m_changed) {
        if (CardParts::isList(area)) {
            reuseLines(area);
            continue;
        }
        for (std::size_t i = 0; i < m_old.size(); ++i) {
            if (m_old.areaOf(i) == area && m_old.holdsValue(i))
                m_replaced.insert(i);
        }
        for (std::size_t i = 0; i < m_new.size(); ++i) {
            if (m_new.areaOf(i) == area && m_new.holdsValue(i))
                addNewLine(area, i);
        }
    }
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
        if (isReplaced(i))
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
