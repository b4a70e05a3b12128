// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/EdsSaver.h"

#include "contacts/stores/eds/StoredCard.h"

#include <QDateTime>
#include <QDir>

#include <algorithm>

namespace {

/// Far below what a message of the bus may hold (128 MiB), so that a daemon that adds to the texts stays below it too.
constexpr qsizetype kMostBytesAtOnce = qsizetype(16) * 1024 * 1024;
constexpr qsizetype kBackups = 10;
const QString kLookedUpLater = QStringLiteral("; what became of the change is looked up before the next one is made");

using Change = EdsBook::Change;

/// Makes the change in as many calls as the cards need.
Result<int> inBatches(EdsBook &book, Change change, const std::vector<EdsBook::Card> &cards)
{
    std::vector<EdsBook::Card> batch;
    qsizetype bytes = 0;
    int calls = 0;
    for (const auto &card : cards) {
        batch.push_back(card);
        bytes += card.text.size();
        const bool isFull = batch.size() == book.cardsAtOnce() || bytes >= kMostBytesAtOnce;
        if (!isFull && &card != &cards.back())
            continue;
        if (auto changed = book.change(change, batch); !changed)
            return changed.error();
        ++calls;
        batch.clear();
        bytes = 0;
    }
    return calls;
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

Result<EdsSaver::Texts> EdsSaver::currentTexts(const std::vector<QByteArray> &uids)
{
    Texts texts;
    const auto take = [&texts](std::vector<Card> &page, std::size_t /*total*/) {
        for (const Card &card : page)
            texts.insert(card.uid, card.text);
        return true;
    };
    auto read = m_book.read(uids, take);
    return read ? Result<Texts>(std::move(texts)) : read.error();
}

Result<void> EdsSaver::addToPlan(Plan &plan, const RecordChange &change, const QByteArray &current)
{
    const PersonRecordPtr now = current.isNull() ? nullptr : StoredCard::recordOf(current);
    const bool asBelieved = change.before ? now && now->hasSameValues(*change.before) : current.isNull();
    if (!asBelieved)
        return changedByOthers(change.uid);
    EdsJournal::Entry entry{change.uid.toUtf8(), StoredCard::withPictureInside(current), {}, change.cause};
    if (!change.after) {
        plan.removals.push_back({entry.uid, {}});
    } else {
        // What others changed beside the values is in `now` only.
        entry.after = StoredCard::updated(
            current, change.uid, now ? withChanges(*now, *change.before, *change.after) : *change.after);
        const PersonRecordPtr written = entry.after.isNull() ? nullptr : StoredCard::recordOf(entry.after);
        if (!written || !written->hasSameValues(*change.after))
            return Error{ErrorKind::Invalid, change.uid % QStringLiteral(": no card can hold this change")};
        (change.before ? plan.modifications : plan.additions).push_back({entry.uid, entry.after});
    }
    plan.entries.push_back(std::move(entry));
    return {};
}

Result<EdsSaver::Plan> EdsSaver::planOf(const std::vector<RecordChange> &changes)
{
    std::vector<QByteArray> uids(changes.size());
    std::ranges::transform(changes, uids.begin(), [](const RecordChange &change) { return change.uid.toUtf8(); });
    const auto texts = currentTexts(uids);
    if (!texts)
        return texts.error();
    Plan plan;
    plan.entries.reserve(changes.size());
    const ChangeCausePtr unnamed = makeCause(ChangeCause::Kind::Other);
    for (const auto &change : changes) {
        if (auto added = addToPlan(plan, change, texts->value(change.uid.toUtf8())); !added)
            return added.error();
        if (!change.cause)
            plan.entries.back().cause = unnamed;
    }
    return plan;
}

Result<int> EdsSaver::apply(const Plan &plan)
{
    int calls = 0;
    const auto steps = std::to_array<std::pair<Change, const std::vector<Card> &>>(
        {{Change::Remove, plan.removals}, {Change::Modify, plan.modifications}, {Change::Add, plan.additions}});
    for (const auto &[change, cards] : steps) {
        const auto made = inBatches(m_book, change, cards);
        if (!made)
            return made.error();
        calls += *made;
    }
    return calls;
}

Result<int> EdsSaver::save(const std::vector<RecordChange> &changes)
{
    if (auto settled = settleUnfinished(); !settled)
        return settled.error();
    if (auto backedUp = backUp(); !backedUp)
        return backedUp.error();
    const auto plan = planOf(changes);
    if (!plan)
        return plan.error();
    if (auto begun = m_journal.begin(plan->entries); !begun)
        return begun.error();
    auto calls = apply(*plan);
    if (!calls) {
        if (m_book.hasTimedOut()) { // a look now would tell nothing: the daemon may still be at it
            m_mayBeWrittenUntil = Clock::now() + m_callLimit;
            return Error{ErrorKind::Unavailable, calls.error().text % kLookedUpLater};
        }
        const auto isInBook = settle(plan->entries, calls.error());
        if (!isInBook)
            return isInBook.error();
        if (!*isInBook)
            return calls.error();
        calls = 0;
    }
    m_journal.finish();
    return calls;
}

Result<void> EdsSaver::backUp()
{
    if (m_isBackedUp)
        return {};
    QByteArray cards;
    const auto take = [&cards](std::vector<Card> &page, std::size_t /*total*/) {
        for (const Card &card : page) {
            cards += StoredCard::withPictureInside(card.text);
            if (!cards.endsWith('\n'))
                cards += "\r\n";
        }
        return true;
    };
    auto done = m_book.readAll(take);
    if (done && !cards.isEmpty()) {
        const QString time = QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd'T'hhmmss.zzz'Z'"));
        done = writeDurably(m_backups % u'/' % time % QStringLiteral(".vcf"), cards);
        QDir backups(m_backups, QStringLiteral("*.vcf"), QDir::Name | QDir::Reversed, QDir::Files);
        for (const QString &old : backups.entryList().mid(kBackups))
            backups.remove(old);
    }
    if (!done)
        return Error{done.error().kind,
            m_book.info().name % QStringLiteral(": nothing was changed, because no backup could be made first: ")
                % done.error().text};
    m_isBackedUp = true;
    return {};
}

/// Finds out how a save that failed for @p reason ended. True: it is in the book after all. False: the book holds what
/// it held before. An error: the book cannot be reached, and the journal remains.
Result<bool> EdsSaver::settle(const std::vector<EdsJournal::Entry> &entries, const Error &reason)
{
    std::vector<QByteArray> uids(entries.size());
    std::ranges::transform(entries, uids.begin(), &EdsJournal::Entry::uid);
    const auto texts = currentTexts(uids);
    if (!texts)
        return Error{ErrorKind::Unavailable, reason.text % kLookedUpLater};
    Plan undo;
    std::size_t applied = 0;
    for (const auto &entry : entries) {
        const QByteArray now = texts->value(entry.uid);
        if (!holds(now, entry.after))
            continue; // as it was, or since changed by another program
        ++applied;
        if (entry.before.isNull())
            undo.removals.push_back({entry.uid, {}});
        else
            (now.isNull() ? undo.additions : undo.modifications)
                .push_back({entry.uid, StoredCard::withServerMark(entry.before, now)});
    }
    if (applied == entries.size())
        return true;
    if (Clock::now() < m_mayBeWrittenUntil)
        return Error{ErrorKind::Unavailable,
            m_book.info().name % QStringLiteral(": an earlier change may still be under way; try again in a minute")};
    if (auto undone = apply(undo); !undone)
        return Error{undone.error().kind,
            reason.text % QStringLiteral("; a part of the change is in the book and is taken back later: ")
                % undone.error().text};
    m_journal.discard();
    return false;
}

Result<void> EdsSaver::settleUnfinished()
{
    for (auto entries = m_journal.unfinished(); !entries.empty(); entries = m_journal.unfinished()) {
        const auto isInBook = settle(entries, {ErrorKind::Io, QStringLiteral("an earlier save was cut short")});
        if (!isInBook)
            return isInBook.error();
        if (*isInBook)
            m_journal.finish();
    }
    return {};
}
