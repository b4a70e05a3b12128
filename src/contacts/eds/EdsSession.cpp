// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/eds/EdsSession.h"

#include "contacts/eds/EdsHistory.h"
#include "contacts/eds/StoredCard.h"

#include <QDateTime>

#include <algorithm>
#include <future>

namespace {

/// Far below what a message of the bus may hold (128 MiB), so that a daemon that adds to the texts stays below it too.
constexpr qsizetype kMostBytesAtOnce = qsizetype(16) * 1024 * 1024;
constexpr qsizetype kBackups = 10;

QByteArray textIn(const std::map<QByteArray, QByteArray> &texts, const QByteArray &uid)
{
    const auto found = texts.find(uid);
    return found == texts.end() ? QByteArray() : found->second;
}

/// Calls @p change with as many items at once as the daemon and the bus take.
template <typename Item, typename Size, typename Change>
Result<void> inBatches(const std::vector<Item> &items, Size size, Change change)
{
    std::vector<Item> batch;
    qsizetype bytes = 0;
    for (std::size_t i = 0; i < items.size(); ++i) {
        batch.push_back(items[i]);
        bytes += size(items[i]);
        const bool isFull = batch.size() == EdsBook::kPageSize || bytes >= kMostBytesAtOnce;
        if (!isFull && i + 1 < items.size())
            continue;
        if (auto changed = change(batch); !changed)
            return changed;
        batch.clear();
        bytes = 0;
    }
    return {};
}

/// The number that a local book's revision ends in and that grows by one with each call that changes it; -1 for none.
qint64 counterOf(const QByteArray &revision)
{
    const qsizetype open = revision.lastIndexOf('(');
    bool isNumber = false;
    const qint64 number = open < 0 ? 0 : revision.mid(open + 1).chopped(1).toLongLong(&isNumber);
    return isNumber ? number : -1;
}

bool holds(const QByteArray &now, const QByteArray &wanted)
{
    if (now.isNull() || wanted.isNull())
        return now.isNull() == wanted.isNull();
    const PersonRecordPtr a = StoredCard::recordOf(now);
    const PersonRecordPtr b = StoredCard::recordOf(wanted);
    return a && b && a->hasSameValues(*b);
}

} // namespace

EdsSession::EdsSession(QByteArray sourceUid, QString dataFolder, const std::shared_ptr<CallGuard> &guard)
    : m_book(std::move(sourceUid), guard), m_dataFolder(std::move(dataFolder))
{ }

Result<void> EdsSession::open()
{
    if (auto connected = m_book.connect(); !connected)
        return connected;
    if (!m_journal) {
        m_dataFolder = folderOfBook(m_dataFolder, source().uid);
        m_journal = std::make_unique<EdsJournal>(m_dataFolder);
    }
    return {};
}

Result<void> EdsSession::readCards(std::span<const QByteArray> uids, const TakeCards &take)
{
    while (!uids.empty()) {
        const std::size_t left = uids.size();
        for (int attempt = 0; attempt < 2 && !uids.empty(); ++attempt) { // the daemon may have to be started anew
            std::size_t taken = 0;
            const auto read = m_book.cardsByPages(uids, take, taken);
            uids = uids.subspan(taken);
            if (!read && read.error().kind != ErrorKind::Unavailable)
                return read;
        }
        if (uids.size() < left || uids.empty())
            continue;
        // Cards so large that a page of them breaks the bus come in smaller ones.
        const auto page = uids.first(std::min(EdsBook::kPageSize, uids.size()));
        if (auto parts = readInParts(page, take); !parts)
            return parts;
        uids = uids.subspan(page.size());
    }
    return {};
}

Result<void> EdsSession::readInParts(std::span<const QByteArray> page, const TakeCards &take)
{
    const std::size_t middle = page.size() / 2;
    for (const auto part : {page.first(middle), page.subspan(middle)}) {
        auto cards = m_book.cards(part.data(), part.size());
        if (!cards && cards.error().kind == ErrorKind::Unavailable && part.size() > 1) {
            if (auto parts = readInParts(part, take); !parts)
                return parts;
            continue;
        }
        if (!cards)
            return cards.error();
        if (!take(*cards))
            return Error{ErrorKind::Cancelled, source().name % QStringLiteral(": reading was given up")};
    }
    return {};
}

Result<std::vector<QByteArray>> EdsSession::uidsInOrder()
{
    auto uids = m_book.uids();
    if (!uids && uids.error().kind == ErrorKind::Unavailable && m_book.connect())
        uids = m_book.uids();
    if (uids)
        std::ranges::sort(*uids); // the daemon's own order changes with every card that is changed
    return uids;
}

Result<void> EdsSession::readBook(const TakeCards &take)
{
    const auto uids = uidsInOrder();
    return uids ? readCards(*uids, take) : uids.error();
}

Result<std::vector<StoredRecord>> EdsSession::loadAll(const AddressBookStore::LoadProgress &progress)
{
    if (auto opened = open(); !opened)
        return opened.error();
    if (auto settled = settleUnfinished(); !settled)
        return settled.error();
    const QByteArray revision = m_book.revision();
    std::vector<StoredRecord> people;
    QHash<QByteArray, std::size_t> seen;
    // One page is read into records while the daemon puts the next one together.
    std::future<void> reading;
    const auto uids = uidsInOrder();
    if (!uids)
        return uids.error();
    qint64 done = 0;
    const auto take = [&](std::vector<Card> &page) {
        const auto size = qint64(page.size());
        if (reading.valid())
            reading.get();
        reading = std::async(std::launch::async, [&people, &seen, cards = std::move(page)]() mutable {
            std::ranges::sort(cards, {}, &Card::uid);
            const auto records = StoredCard::read(cards);
            for (std::size_t i = 0; i < cards.size(); ++i) {
                if (!records[i].record)
                    continue;
                seen.insert(cards[i].uid, records[i].digest);
                people.push_back({QString::fromUtf8(cards[i].uid), records[i].record});
            }
        });
        done += size;
        return !progress || progress(done, qint64(uids->size()));
    };
    const auto read = readCards(*uids, take);
    if (reading.valid())
        reading.get();
    if (!read)
        return read.error();
    m_seen = std::move(seen);
    m_seenRevision = revision;
    m_mustList = false;
    return people;
}

Result<std::vector<OutsideChange>> EdsSession::takeChangesFromOutside()
{
    if (auto opened = open(); !opened)
        return opened.error();
    const QByteArray revision = m_book.revision();
    if (!m_mustList && !revision.isEmpty() && revision == m_seenRevision)
        return std::vector<OutsideChange>();
    std::vector<OutsideChange> changes;
    QHash<QByteArray, std::size_t> seen;
    const auto take = [&](std::vector<Card> &page) {
        const auto records = StoredCard::read(page);
        for (std::size_t i = 0; i < page.size(); ++i) {
            const auto &[record, digest] = records[i];
            if (!record)
                continue;
            seen.insert(page[i].uid, digest);
            if (m_seen.value(page[i].uid) != digest)
                changes.push_back({QString::fromUtf8(page[i].uid), record});
        }
        return true;
    };
    if (auto read = readBook(take); !read)
        return read.error();
    for (auto it = m_seen.cbegin(); it != m_seen.cend(); ++it) {
        if (!seen.contains(it.key()))
            changes.push_back({QString::fromUtf8(it.key()), nullptr});
    }
    m_seen = std::move(seen);
    m_seenRevision = revision;
    m_mustList = false;
    return changes;
}

Result<EdsSession::Texts> EdsSession::currentTexts(const std::vector<EdsJournal::Entry> &entries)
{
    std::vector<QByteArray> uids;
    uids.reserve(entries.size());
    for (const auto &entry : entries)
        uids.push_back(entry.uid);
    Texts texts;
    const auto take = [&texts](std::vector<Card> &cards) {
        for (Card &card : cards)
            texts[card.uid] = std::move(card.text);
        return true;
    };
    if (auto read = readCards(uids, take); !read)
        return read.error();
    return texts;
}

Result<void> EdsSession::addToPlan(Plan &plan, const RecordChange &change, const QByteArray &current) const
{
    const PersonRecordPtr now = current.isNull() ? nullptr : StoredCard::recordOf(current);
    const bool asBelieved = change.before ? now && now->hasSameValues(*change.before) : current.isNull();
    if (!asBelieved)
        return Error{ErrorKind::Conflict, change.uid % QStringLiteral(": changed by another program meanwhile")};
    EdsJournal::Entry entry{change.uid.toUtf8(), StoredCard::withPictureInside(current), {}, change.cause};
    if (!change.after) {
        plan.removals.push_back(entry.uid);
    } else {
        // What others changed beside the values is in `now` only.
        entry.after = change.before
            ? StoredCard::patched(current, change.uid, withChanges(*now, *change.before, *change.after))
            : StoredCard::cardOf(change.uid, *change.after);
        const PersonRecordPtr written = entry.after.isNull() ? nullptr : StoredCard::recordOf(entry.after);
        if (!written || !written->hasSameValues(*change.after))
            return Error{ErrorKind::Invalid, change.uid % QStringLiteral(": no card can hold this change")};
        (change.before ? plan.modifications : plan.additions).push_back({entry.uid, entry.after});
    }
    plan.entries.push_back(std::move(entry));
    return {};
}

Result<EdsSession::Plan> EdsSession::planOf(const std::vector<RecordChange> &changes)
{
    std::vector<EdsJournal::Entry> touched;
    touched.reserve(changes.size());
    for (const auto &change : changes)
        touched.push_back({.uid = change.uid.toUtf8(), .before = {}, .after = {}});
    const auto texts = currentTexts(touched);
    if (!texts)
        return texts.error();
    Plan plan;
    plan.entries.reserve(changes.size());
    const ChangeCausePtr unnamed = makeCause(ChangeCause::Kind::Other);
    for (const auto &change : changes) {
        if (auto added = addToPlan(plan, change, textIn(*texts, change.uid.toUtf8())); !added)
            return added.error();
        if (!change.cause)
            plan.entries.back().cause = unnamed;
    }
    return plan;
}

Result<void> EdsSession::apply(const Plan &plan)
{
    const auto cardSize = [](const Card &card) { return card.text.size(); };
    const auto uidSize = [](const QByteArray &uid) { return uid.size(); };
    auto done = inBatches(plan.removals, uidSize, [this](const auto &batch) { return m_book.remove(batch); });
    if (done)
        done = inBatches(plan.modifications, cardSize, [this](const auto &batch) { return m_book.modify(batch); });
    if (done)
        done = inBatches(plan.additions, cardSize, [this](const auto &batch) { return m_book.add(batch); });
    return done;
}

Result<void> EdsSession::commit(const std::vector<RecordChange> &changes)
{
    if (auto opened = open(); !opened)
        return opened;
    if (isReadOnly())
        return Error{ErrorKind::ReadOnly, source().name % QStringLiteral(": this address book cannot be changed")};
    if (auto settled = settleUnfinished(); !settled)
        return settled;
    const QByteArray revision = m_book.revision();
    const auto plan = planOf(changes);
    if (!plan) {
        m_mustList = m_mustList || plan.error().kind == ErrorKind::Conflict;
        return plan.error();
    }
    if (auto backedUp = backUp(); !backedUp)
        return backedUp;
    if (auto begun = m_journal->begin(plan->entries); !begun)
        return begun;
    if (auto applied = apply(*plan); !applied) {
        m_mustList = true;
        const auto isInBook = settle(plan->entries, applied.error());
        if (!isInBook)
            return isInBook.error();
        if (!*isInBook)
            return applied;
    }
    m_journal->finish();
    noteOwn(*plan, revision);
    return {};
}

void EdsSession::noteOwn(const Plan &plan, const QByteArray &revisionBefore)
{
    for (const auto &entry : plan.entries) {
        if (entry.after.isNull())
            m_seen.remove(entry.uid);
        else
            m_seen.insert(entry.uid, 0);
    }
    const auto calls = [](std::size_t items) { return qint64((items + EdsBook::kPageSize - 1) / EdsBook::kPageSize); };
    const qint64 own = calls(plan.removals.size()) + calls(plan.modifications.size()) + calls(plan.additions.size());
    const QByteArray revision = m_book.revision();
    const qint64 counter = counterOf(revision);
    // Else others were at it as well, and what they did has yet to be read.
    if (revisionBefore == m_seenRevision && counter >= 0 && counter == counterOf(revisionBefore) + own)
        m_seenRevision = revision;
}

Result<void> EdsSession::backUp()
{
    if (m_isBackedUp)
        return {};
    QByteArray cards;
    const auto take = [&cards](std::vector<Card> &page) {
        for (const Card &card : page) {
            cards += StoredCard::withPictureInside(card.text);
            if (!cards.endsWith('\n'))
                cards += "\r\n";
        }
        return true;
    };
    auto done = readBook(take);
    if (done && !cards.isEmpty()) {
        const QString folder = m_dataFolder % QStringLiteral("/backups");
        const QString time = QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd'T'hhmmss.zzz'Z'"));
        done = writeDurably(folder % u'/' % time % QStringLiteral(".vcf"), cards);
        keepNewest(folder, QStringLiteral("*.vcf"), kBackups);
    }
    if (!done)
        return Error{done.error().kind,
            source().name % QStringLiteral(": nothing was changed, because no backup could be made first: ")
                % done.error().text};
    m_isBackedUp = true;
    return {};
}

QString EdsSession::historyFolder() const
{
    return m_dataFolder % QStringLiteral("/history");
}

Result<std::vector<ChangeSummary>> EdsSession::history()
{
    if (auto opened = open(); !opened)
        return opened.error();
    return EdsHistory::summaries(historyFolder());
}

Result<ChangeStep> EdsSession::historyStep(const QString &causeId)
{
    if (auto opened = open(); !opened)
        return opened.error();
    return EdsHistory::step(historyFolder(), causeId);
}

/// Finds out how a save that failed for @p reason ended. True: it is in the book after all. False: the book holds what
/// it held before. An error: the book cannot be reached, and the journal remains.
Result<bool> EdsSession::settle(const std::vector<EdsJournal::Entry> &entries, const Error &reason)
{
    const auto texts = currentTexts(entries);
    if (!texts)
        return Error{ErrorKind::Unavailable,
            reason.text % QStringLiteral("; what became of the change is looked up when the book can be reached")};
    Plan undo;
    std::size_t applied = 0;
    for (const auto &entry : entries) {
        const QByteArray now = textIn(*texts, entry.uid);
        if (!holds(now, entry.after))
            continue; // as it was, or changed by somebody else meanwhile
        ++applied;
        if (entry.before.isNull())
            undo.removals.push_back(entry.uid);
        else
            (now.isNull() ? undo.additions : undo.modifications).push_back({entry.uid, entry.before});
    }
    if (applied == entries.size())
        return true;
    if (auto undone = apply(undo); !undone)
        return Error{undone.error().kind,
            reason.text % QStringLiteral("; a part of the change is in the book and is taken back later: ")
                % undone.error().text};
    m_journal->discard();
    return false;
}

Result<void> EdsSession::settleUnfinished()
{
    for (auto entries = m_journal->unfinished(); !entries.empty(); entries = m_journal->unfinished()) {
        m_mustList = true;
        const auto isInBook = settle(entries, {ErrorKind::Io, QStringLiteral("an earlier save was cut short")});
        if (!isInBook)
            return isInBook.error();
        if (*isInBook)
            m_journal->finish();
    }
    return {};
}
