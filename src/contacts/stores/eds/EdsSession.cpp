// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/EdsSession.h"

#include "base/Job.h"
#include "contacts/stores/eds/EdsLog.h"
#include "contacts/stores/eds/StoredCard.h"

namespace {

/// The number that a local book's revision ends in and that grows by one with each call that changes it; -1 for none.
qint64 counterOf(const QByteArray &revision)
{
    const qsizetype open = revision.lastIndexOf('(');
    bool isNumber = false;
    const qint64 number = open < 0 ? 0 : revision.mid(open + 1).chopped(1).toLongLong(&isNumber);
    return isNumber ? number : -1;
}

} // namespace

EdsSession::EdsSession(QByteArray sourceUid, QString dataFolder, const std::shared_ptr<CallGuard> &guard)
    : m_book(std::move(sourceUid), guard), m_folder(std::move(dataFolder)), m_callLimit(guard->callLimit())
{ }

Result<QByteArray> EdsSession::open()
{
    auto revision = m_book.revision();
    if (revision && !m_saver) {
        m_folder = folderOfBook(m_folder, m_book.info().uid);
        m_saver = std::make_unique<EdsSaver>(m_book, m_folder, m_callLimit);
    }
    return revision;
}

Result<std::vector<StoredRecord>> EdsSession::loadAll(const AddressBookStore::LoadProgress &progress)
{
    const auto revision = open();
    if (!revision)
        return revision.error();
    if (auto settled = m_saver->settleUnfinished(); !settled) {
        if (m_book.hasTimedOut())
            return settled.error();
        // The next change has to wait for it, reading does not.
        qCCritical(lcEds).noquote() << settled.error().text;
    }
    return changesSince({}, *revision, progress);
}

Result<std::vector<StoredRecord>> EdsSession::takeChangesFromOutside()
{
    const auto revision = open();
    if (!revision)
        return revision.error();
    if (!m_mustList && !revision->isEmpty() && *revision == m_seenRevision)
        return std::vector<StoredRecord>();
    return changesSince(m_seen, *revision, {});
}

/// Reads the book, which is of this revision or of a later one.
Result<std::vector<StoredRecord>> EdsSession::changesSince(
    const Digests &known, const QByteArray &revision, const AddressBookStore::LoadProgress &progress)
{
    std::vector<StoredRecord> changes;
    Digests seen;
    const auto note = [&](const std::vector<EdsBook::Card> &page) {
        const auto records = StoredCard::read(page);
        for (std::size_t i = 0; i < page.size(); ++i) {
            const auto &[record, digest] = records[i];
            if (!record)
                continue;
            seen.insert(page[i].uid, digest);
            if (known.value(page[i].uid) != digest)
                changes.push_back({QString::fromUtf8(page[i].uid), record});
        }
    };
    std::size_t done = 0;
    Job noting; // the page before, while the daemon puts this one together
    const auto take = [&](std::vector<EdsBook::Card> &page, std::size_t total) {
        done += page.size();
        noting.wait();
        noting.start([&note, previous = std::move(page)] { note(previous); });
        return !progress || progress(qint64(done), qint64(total));
    };
    auto read = m_book.readAll(take);
    noting.wait();
    if (!read)
        return read.error();
    for (auto it = known.cbegin(); it != known.cend(); ++it) {
        if (!seen.contains(it.key()))
            changes.push_back({QString::fromUtf8(it.key()), nullptr});
    }
    m_seen = std::move(seen);
    m_seenRevision = revision;
    m_mustList = false;
    return changes;
}

Result<void> EdsSession::commit(const std::vector<RecordChange> &changes)
{
    const auto revision = open();
    if (!revision)
        return revision.error();
    if (m_book.isReadOnly())
        return Error{ErrorKind::ReadOnly, m_book.info().name % QStringLiteral(": this address book cannot be changed")};
    const auto calls = m_saver->save(changes);
    if (!calls) {
        m_mustList = true;
        return calls.error();
    }
    noteOwn(changes, *calls, *revision);
    return {};
}

void EdsSession::noteOwn(const std::vector<RecordChange> &changes, int calls, const QByteArray &revisionBefore)
{
    for (const auto &change : changes) {
        if (change.after)
            m_seen.insert(change.uid.toUtf8(), 0);
        else
            m_seen.remove(change.uid.toUtf8());
    }
    const auto revision = m_book.revision();
    const qint64 counter = revision ? counterOf(*revision) : -1;
    // Else others changed the book as well, and what they did has yet to be read.
    if (revisionBefore == m_seenRevision && counter >= 0 && counter == counterOf(revisionBefore) + calls)
        m_seenRevision = *revision;
}
