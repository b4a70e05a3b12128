// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/VCardWriter.h"

#include "contacts/cards/Card.h"
#include "contacts/cards/CardMap.h"
#include "contacts/cards/CardSurplus.h"
#include "contacts/cards/ExactValues.h"

#include <QStringList>

#include <map>
#include <set>

namespace {

/// A line of the new card: one of the old card's, or an unfolded text.
struct Piece
{
    CardArea area = CardArea::None;
    const CardLine *old = nullptr;
    std::string text;
};

std::string upper(std::string_view text)
{
    std::string result(text);
    std::ranges::transform(result, result.begin(), upperAscii);
    return result;
}

bool isCompanion(const CardLine &line)
{
    return line.area() == CardArea::Label || line.area() == CardArea::CountryCode;
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

std::vector<std::string_view> split(std::string_view lines)
{
    std::vector<std::string_view> result;
    while (!lines.empty()) {
        const std::size_t end = std::min(lines.find('\n'), lines.size());
        if (end > 0)
            result.push_back(lines.substr(0, end));
        lines.remove_prefix(std::min(end + 1, lines.size()));
    }
    return result;
}

/// Kept lines without those that would not be read as one line of a card.
std::string writable(const QString &kept)
{
    std::string lines;
    const std::string text = kept.toStdString();
    for (const std::string_view each : split(text)) {
        const CardLine line = parsedLine(each);
        const bool isFrame = line.area() == CardArea::Begin || line.area() == CardArea::End || line.opensCard();
        if (line.hasColon && !isFrame && each.find('\r') == each.npos && !isBlank(each.front()))
            lines.append(lines.empty() ? "" : "\n").append(each);
    }
    return lines;
}

class CardUpdate
{
public:
    CardUpdate(const Card &card, const CardChange &change)
        : m_card(card), m_change(change), m_isNew(card.lines().empty())
    { }

    QByteArray run();

private:
    void findChanges();
    void findGroups();
    bool isDisplayLeftAlone() const;
    void write(const CardRow &row);
    void replaceEntries(const CardRow &row, const CardUnits &units);
    void add(const CardRow &row, const std::string &unit, const CardLine *replaced);
    void addLines(CardArea area, std::string_view lines, const CardLine *replaced = nullptr);
    std::string freeItem();
    void adjustFiledAs();
    void changeKeptLines();
    std::vector<Piece> assembled();
    void addExactLines(std::vector<Piece> &pieces) const;

    const Card &m_card;
    const CardChange &m_change;
    const bool m_isNew;
    bool m_isExact = true; // no reader takes a value that was written for another
    std::set<CardArea> m_changed;
    std::set<const CardLine *> m_replaced; // old lines that stay out, or go to where their area is written
    std::vector<Piece> m_written;
    std::multimap<std::string, std::string> m_kept; // by what they stand for; equal values may have a line each
    std::set<std::string> m_groups; // in upper case
    int m_lastItem = 0;
};

/// A name for display follows the parts of the name, or whatever it was made of; otherwise it is the user's own.
bool CardUpdate::isDisplayLeftAlone() const
{
    if (m_changed.contains(areaOf(kABFirstNameProperty)))
        return false;
    const auto line = std::ranges::find(m_card.lines(), CardArea::Display, &CardLine::area);
    return line == m_card.lines().end() || !isFormattedName(m_change.before, line->value);
}

void CardUpdate::findChanges()
{
    for (const ABPropertyInfo &info : allProperties()) {
        if (m_change.before.value(info.property) != m_change.after.value(info.property))
            m_changed.insert(areaOf(info.property));
    }
    if (!m_change.before.hasImageOf(m_change.after))
        m_changed.insert(CardArea::Picture);
    if (formattedName(m_change.before) != formattedName(m_change.after) && !isDisplayLeftAlone())
        m_changed.insert(CardArea::Display);
}

/// Those that lines of the new card may have.
void CardUpdate::findGroups()
{
    for (const CardLine &line : m_card.lines())
        m_groups.insert(upper(line.group));
    for (const KeptLine &kept : m_change.after.keptLines()) {
        std::string lines = writable(kept.text);
        for (const std::string_view line : split(lines))
            m_groups.insert(upper(parsedLine(line).group));
        if (!kept.basis.isNull() && !lines.empty())
            m_kept.emplace(kept.basis.toStdString(), std::move(lines));
    }
}

std::string CardUpdate::freeItem()
{
    std::string item;
    do {
        item = "item" + std::to_string(++m_lastItem);
    } while (!m_groups.insert(upper(item)).second);
    return item;
}

/// Adds lines, the first of which is to replace @p replaced.
void CardUpdate::addLines(CardArea area, std::string_view lines, const CardLine *replaced)
{
    std::string item;
    for (const std::string_view each : split(lines)) {
        std::string line(each);
        if (line.starts_with(kUnitMark)) {
            if (item.empty())
                item = freeItem() + '.';
            line.replace(0, kUnitMark.size(), item);
        }
        m_written.push_back({area, nullptr, replaced ? withSurplusOf(*replaced, line) : std::move(line)});
        replaced = nullptr;
    }
}

/// Adds a unit, or the lines that were kept for it.
void CardUpdate::add(const CardRow &row, const std::string &unit, const CardLine *replaced)
{
    const auto found = m_kept.lower_bound(unit);
    const bool isKept = found != m_kept.end() && found->first == unit;
    std::string kept = isKept ? m_kept.extract(found).mapped() : std::string();
    if (row.print)
        addLines(row.area, row.print({m_change.after, m_change.form, unit, kept}), replaced);
    else
        addLines(row.area, isKept ? kept : unit, replaced);
}

void CardUpdate::write(const CardRow &row)
{
    CardUnits units;
    m_isExact = row.write(row, {m_change.uid, m_change.after}, units) && m_isExact;
    if (isList(row.area) && !m_isNew)
        return replaceEntries(row, units);
    std::vector<const CardLine *> old;
    for (const CardLine &line : m_card.lines()) {
        if (line.area() == row.area && m_card.holdsValue(line))
            old.push_back(&line);
    }
    m_replaced.insert(old.begin(), old.end());
    const bool isOneForOne = old.size() == 1 && units.size() == 1 && row.area != CardArea::Picture;
    for (const std::string &unit : units)
        add(row, unit, isOneForOne ? old.front() : nullptr);
}

/// Lists are compared entry by entry.
void CardUpdate::replaceEntries(const CardRow &row, const CardUnits &units)
{
    CardUnits said;
    row.write(row, {m_change.uid, m_card.record()}, said);
    std::vector<std::vector<const CardLine *>> old(said.size()); // the lines of each old entry
    for (const CardLine &line : m_card.lines()) {
        const LineMeaning &meaning = m_card.meaningOf(line);
        if (line.area() != row.area || meaning.kind == LineMeaning::Kept)
            continue;
        m_replaced.insert(&line);
        if (meaning.kind == LineMeaning::Value)
            old.at(meaning.entry).push_back(&line);
    }
    std::multimap<std::string_view, std::size_t> gone; // old entries by what they say, but those that stay
    for (std::size_t i = 0; i < said.size(); ++i)
        gone.emplace(said[i], i);
    std::vector<std::vector<const CardLine *>> staying;
    for (const std::string &unit : units) {
        const auto entry = gone.extract(unit);
        staying.push_back(entry ? std::move(old[entry.mapped()]) : std::vector<const CardLine *>());
    }
    std::vector<const CardLine *> left;
    for (const auto &[unit, entry] : gone)
        left.insert(left.end(), old[entry].begin(), old[entry].end());
    const auto isNewEntry = [](const auto &lines) { return lines.empty(); };
    const bool isOneForOne = left.size() == 1 && std::ranges::count_if(staying, isNewEntry) == 1;
    for (std::size_t i = 0; i < units.size(); ++i) {
        for (const CardLine *line : staying[i])
            m_written.push_back({row.area, line, {}});
        if (staying[i].empty())
            add(row, units[i], isOneForOne ? left.front() : nullptr);
    }
    for (const CardLine &line : m_card.lines()) { // an address that is another one now is spelled out no more
        if (std::ranges::any_of(left, [&line](const CardLine *each) { return isLabelOfAddress(line, *each); }))
            m_replaced.insert(&line);
    }
}

void CardUpdate::adjustFiledAs()
{
    if (!m_changed.contains(areaOf(kABFirstNameProperty)) && !m_changed.contains(areaOf(kABOrganizationProperty)))
        return;
    for (const CardLine &line : m_card.lines()) {
        if (line.area() != CardArea::FiledAs)
            continue;
        const QString follows = followingFiledAs(unescaped(line.value), m_change.before, m_change.after);
        if (follows.isNull())
            continue;
        m_replaced.insert(&line);
        if (!follows.isEmpty())
            m_written.push_back(
                {CardArea::FiledAs, nullptr, std::string(line.row->name).append(":").append(escaped(follows))});
    }
}

/// Those that stand for no value.
void CardUpdate::changeKeptLines()
{
    QStringList removed = keptOnlyIn(m_change.before, m_change.after);
    for (const CardLine &line : m_card.lines()) {
        const LineMeaning &meaning = m_card.meaningOf(line);
        if (meaning.kind == LineMeaning::Kept && !m_replaced.contains(&line) && removed.removeOne(meaning.text))
            m_replaced.insert(&line);
    }
    for (const QString &text : keptOnlyIn(m_change.after, m_change.before))
        addLines(CardArea::None, writable(text));
}

std::vector<Piece> CardUpdate::assembled()
{
    std::set<const CardLine *> reused;
    for (const Piece &piece : m_written)
        reused.insert(piece.old);
    std::set<std::string> living; // groups that still have a line with a value
    std::set<std::string> dying;
    for (const CardLine &line : m_card.lines()) {
        if (!line.group.empty() && !isCompanion(line))
            (m_replaced.contains(&line) && !reused.contains(&line) ? dying : living).insert(upper(line.group));
    }
    std::vector<Piece> pieces;
    std::set<CardArea> placed;
    for (const CardLine &line : m_card.lines()) {
        const std::string group = upper(line.group);
        if (m_replaced.contains(&line) && placed.insert(line.area()).second)
            std::ranges::copy_if(m_written, std::back_inserter(pieces),
                [&line](const Piece &piece) { return piece.area == line.area() && piece.area != CardArea::None; });
        else if (!m_replaced.contains(&line) && line.area() != CardArea::Exact
            && (!isCompanion(line) || living.contains(group) || !dying.contains(group)))
            pieces.push_back({CardArea::None, &line, {}});
    }
    std::ranges::copy_if(m_written, std::back_inserter(pieces),
        [&placed](const Piece &piece) { return piece.area == CardArea::None || !placed.contains(piece.area); });
    return pieces;
}

/// A record from before several notes became one keeps all but the first as lines of no value.
bool keepsNotes(const PersonRecord &record)
{
    return std::ranges::any_of(record.keptLines(), [](const KeptLine &kept) {
        return kept.basis.isNull() && parsedLine(kept.text.toStdString()).area() == areaOf(kABNoteProperty);
    });
}

/// Whatever lines cannot say exactly is said exactly in lines of our own.
void CardUpdate::addExactLines(std::vector<Piece> &pieces) const
{
    if (m_isNew && m_isExact && isSafe(m_change.after))
        return;
    std::vector<CardLine> lines;
    if (m_isNew)
        lines.push_back(parsedLine(m_change.form == VCardForm::V4 ? "VERSION:4.0" : "VERSION:3.0"));
    for (const Piece &piece : pieces)
        lines.push_back(piece.old ? *piece.old : parsedLine(piece.text));
    const ImportedRecord imported = recordOfLines(std::move(lines));
    CardValues read{imported.uid, imported.record ? *imported.record : PersonRecord()};
    CardValues wanted{m_change.uid.isEmpty() ? QString() : m_change.uid, m_change.after};
    if (read.record.text(kABNoteProperty) && keepsNotes(wanted.record))
        wanted.record.setText(kABNoteProperty, *read.record.text(kABNoteProperty));
    if (!m_isNew) { // the picture may be kept elsewhere, and the uid is the store's
        read.uid = wanted.uid;
        if (!m_changed.contains(CardArea::Picture)) {
            read.record.setImageData({});
            wanted.record.setImageData({});
        }
    }
    for (std::string &line : exactLines(wanted, read))
        pieces.push_back({CardArea::Exact, nullptr, std::move(line)});
}

QByteArray CardUpdate::run()
{
    if (!m_isNew)
        findChanges();
    findGroups();
    m_written.reserve(24); // as most people need at most
    for (const CardRow &row : cardRows()) {
        if (row.write && (m_isNew || m_changed.contains(row.area)))
            write(row);
    }
    if (!m_isNew)
        adjustFiledAs();
    changeKeptLines();
    std::vector<Piece> pieces = m_isNew ? std::move(m_written) : assembled();
    addExactLines(pieces);
    QByteArray text = "BEGIN:VCARD\r\n";
    text.reserve(1024);
    if (m_isNew)
        text += m_change.form == VCardForm::V4 ? "VERSION:4.0\r\n" : "VERSION:3.0\r\n";
    for (const Piece &piece : pieces) {
        if (piece.old)
            text += m_card.rawLine(*piece.old);
        else
            appendFolded(text, piece.text);
    }
    return text += "END:VCARD\r\n";
}

} // namespace

QByteArray vCardFromRecord(const QString &uid, const PersonRecord &record, VCardForm form)
{
    return updateCard({}, {uid, PersonRecord(), record, form});
}

QByteArray updateCard(const QByteArray &text, const CardChange &change)
{
    const Card card(text);
    return card.isOne() || text.isEmpty() ? CardUpdate(card, change).run() : QByteArray();
}
