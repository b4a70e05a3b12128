// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/EdsSession.h"

#include "contacts/stores/eds/StoredCard.h"

#include <QDateTime>

#include <algorithm>

// How a session saves.

namespace {

/// Far below what a message of the bus may hold (128 MiB), so that a daemon that adds to the texts stays below it too.
constexpr qsizetype kMostBytesAtOnce = qsizetype(16) * 1024 * 1024;
constexpr qsizetype kBackups = 10;
const QString kLookedUpLater = QStringLiteral("; what became of the change is looked up before the next one is made");

QByteArray textIn(const std::map<QByteArray, QByteArray> &texts, const QByteArray &uid)
{
    const auto found = texts.find(uid);
    return found == texts.end() ? QByteArray() : found->second;
}

/// Calls @p change with at most @p most items at once, and no more than the bus takes.
template <typename Item, typename Size, typename Change>
Result<void> inBatches(const std::vector<Item> &items, std::size_t most, Size size, Change change)
{
    std::vector<Item> batch;
    qsizetype bytes = 0;
    for (std::size_t i = 0; i < items.size(); ++i) {
        batch.push_back(items[i]);
        bytes += size(items[i]);
        const bool isFull = batch.size() == most || bytes >= kMostBytesAtOnce;
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
    const std::size_t most = m_book.cardsAtOnce();
    const auto cardSize = [](const Card &card) { return card.text.size(); };
    const auto uidSize = [](const QByteArray &uid) { return uid.size(); };
    auto done = inBatches(plan.removals, most, uidSize, [this](const auto &batch) { return m_book.remove(batch); });
    if (done)
        done =
            inBatches(plan.modifications, most, cardSize, [this](const auto &batch) { return m_book.modify(batch); });
    if (done)
        done = inBatches(plan.additions, most, cardSize, [this](const auto &batch) { return m_book.add(batch); });
    return done;
}

Result<void> EdsSession::commit(const std::vector<RecordChange> &changes)
{
    if (auto opened = open(); !opened)
        return opened;
    if (m_book.isReadOnly())
        return Error{ErrorKind::ReadOnly, source().name % QStringLiteral(": this address book cannot be changed")};
    if (auto settled = settleUnfinished(); !settled)
        return settled;
    // Comes before the comparison: it may take long, and what others change meanwhile must not be missed.
    if (auto backedUp = backUp(); !backedUp)
        return backedUp;
    const auto revision = m_book.revision();
    if (!revision)
        return revision.error();
    const auto plan = planOf(changes);
    if (!plan) {
        m_mustList = m_mustList || plan.error().kind == ErrorKind::Conflict;
        return plan.error();
    }
    if (auto begun = m_journal->begin(plan->entries); !begun)
        return begun;
    if (auto applied = apply(*plan); !applied) {
        m_mustList = true;
        if (m_book.hasTimedOut()) { // a look now would tell nothing: the daemon may still be at it
            m_mayBeWrittenUntil = Clock::now() + m_callLimit;
            return Error{ErrorKind::Unavailable, applied.error().text % kLookedUpLater};
        }
        const auto isInBook = settle(plan->entries, applied.error());
        if (!isInBook)
            return isInBook.error();
        if (!*isInBook)
            return applied;
    }
    m_journal->finish();
    noteOwn(*plan, *revision);
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
    const std::size_t most = m_book.cardsAtOnce();
    const auto calls = [most](std::size_t items) { return qint64((items + most - 1) / most); };
    const qint64 own = calls(plan.removals.size()) + calls(plan.modifications.size()) + calls(plan.additions.size());
    const auto revision = m_book.revision();
    const qint64 counter = revision ? counterOf(*revision) : -1;
    // Else others were at it as well, and what they did has yet to be read.
    if (revisionBefore == m_seenRevision && counter >= 0 && counter == counterOf(revisionBefore) + own)
        m_seenRevision = *revision;
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
    std::size_t total = 0;
    const auto revision = m_book.revision();
    auto done = revision ? readBook(*revision, take, total) : Result<void>(revision.error());
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

/// Finds out how a save that failed for @p reason ended. True: it is in the book after all. False: the book holds what
/// it held before. An error: the book cannot be reached, and the journal remains.
Result<bool> EdsSession::settle(const std::vector<EdsJournal::Entry> &entries, const Error &reason)
{
    const auto texts = currentTexts(entries);
    if (!texts)
        return Error{ErrorKind::Unavailable, reason.text % kLookedUpLater};
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
            (now.isNull() ? undo.additions : undo.modifications)
                .push_back({entry.uid, StoredCard::withServerMark(entry.before, now)});
    }
    if (applied == entries.size())
        return true;
    if (Clock::now() < m_mayBeWrittenUntil)
        return Error{ErrorKind::Unavailable,
            source().name % QStringLiteral(": an earlier change may still be under way; try again in a minute")};
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
