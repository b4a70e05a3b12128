// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/EdsSession.h"

#include "contacts/stores/eds/BookFile.h"
#include "contacts/stores/eds/EdsHistory.h"
#include "contacts/stores/eds/EdsLog.h"
#include "contacts/stores/eds/PageReader.h"
#include "contacts/stores/eds/StoredCard.h"

#include <QFileInfo>

#include <algorithm>
#include <iterator>

namespace {

/// Far from what a message of the bus may hold (128 MiB), and so many ordinary cards are as well.
constexpr qint64 kMostBytesInOneAnswer = qint64(64) * 1024 * 1024;
constexpr std::size_t kMostInOneAnswer = 20'000;
/// Read into records by one thread: some for each processor, and few enough to tell of progress often.
constexpr std::size_t kCardsTogether = 500;

} // namespace

EdsSession::EdsSession(QByteArray sourceUid, QString dataFolder, const std::shared_ptr<CallGuard> &guard)
    : m_book(std::move(sourceUid), guard), m_dataFolder(std::move(dataFolder)), m_callLimit(guard->callLimit())
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
            auto read = m_book.cardsByPages(uids, take, taken);
            uids = uids.subspan(taken);
            if (!read && (read.error().kind != ErrorKind::Unavailable || m_book.hasTimedOut()))
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
        const bool isTooLarge = !cards && cards.error().kind == ErrorKind::Unavailable && !m_book.hasTimedOut();
        if (isTooLarge && part.size() > 1) {
            if (auto parts = readInParts(part, take); !parts)
                return parts;
            continue;
        }
        if (!cards)
            return cards.error();
        if (!take(*cards))
            return m_book.givenUp();
    }
    return {};
}

Result<std::vector<QByteArray>> EdsSession::uidsInOrder()
{
    auto uids = m_book.uids();
    if (!uids && uids.error().kind == ErrorKind::Unavailable && !m_book.hasTimedOut() && m_book.connect())
        uids = m_book.uids();
    if (uids)
        std::ranges::sort(*uids); // the daemon's own order changes with every card that is changed
    return uids;
}

Result<void> EdsSession::readBook(const QByteArray &revision, const TakeCards &take, std::size_t &total)
{
    auto file = BookFile::open(m_book.file(), revision);
    if (!file)
        return askForBook(take, total);
    total = file->count();
    QByteArray last;
    while (auto page = file->next(kCardsTogether)) {
        if (page->empty())
            return {};
        last = page->back().uid;
        if (!take(*page))
            return m_book.givenUp();
    }
    file.reset(); // the daemon may want to write
    const auto uids = uidsInOrder();
    if (!uids)
        return uids.error();
    return readCards({std::ranges::upper_bound(*uids, last), uids->end()}, take);
}

Result<void> EdsSession::askForBook(const TakeCards &take, std::size_t &total)
{
    const auto readByUids = [&](const std::vector<QByteArray> &uids) {
        total = uids.size();
        return readCards(uids, take);
    };
    const QFileInfo file(m_book.file());
    const qint64 bytes = file.isFile() ? file.size() : -1; // no fewer than the cards have together
    if (bytes < 0 || bytes > kMostBytesInOneAnswer) {
        const auto uids = uidsInOrder();
        if (!uids)
            return uids.error();
        if (bytes >= 0 || uids->size() > kMostInOneAnswer)
            return readByUids(*uids);
    }
    // Asking for as many by their uids takes longer.
    auto cards = m_book.allCards();
    if (!cards && cards.error().kind == ErrorKind::Unavailable && !m_book.hasTimedOut()) {
        // Too large for one message, or a daemon that has to be started anew.
        const auto uids = uidsInOrder();
        return uids ? readByUids(*uids) : Result<void>(uids.error());
    }
    if (!cards)
        return cards.error();
    total = cards->size();
    return takeByPages(std::move(*cards), take);
}

Result<void> EdsSession::takeByPages(std::vector<Card> cards, const TakeCards &take)
{
    std::ranges::sort(cards, {}, &Card::uid);
    for (auto begin = cards.begin(); begin != cards.end();) {
        const auto end = begin + std::min(std::ptrdiff_t(kCardsTogether), cards.end() - begin);
        std::vector<Card> page{std::make_move_iterator(begin), std::make_move_iterator(end)};
        if (!take(page))
            return m_book.givenUp();
        begin = end;
    }
    return {};
}

Result<std::vector<StoredRecord>> EdsSession::loadAll(const AddressBookStore::LoadProgress &progress)
{
    if (auto opened = open(); !opened)
        return opened.error();
    if (auto settled = settleUnfinished(); !settled) {
        if (m_book.hasTimedOut())
            return settled.error();
        // The next change has to wait for it, reading does not.
        qCCritical(lcEds).noquote() << settled.error().text;
    }
    const auto revision = m_book.revision();
    if (!revision)
        return revision.error();
    PageReader pages;
    std::size_t total = 0;
    std::size_t done = 0;
    const auto take = [&](std::vector<Card> &page) {
        done += page.size();
        pages.add(std::move(page));
        return !progress || progress(qint64(done), qint64(total));
    };
    if (auto read = readBook(*revision, take, total); !read)
        return read.error();
    auto book = pages.finish();
    m_seen = std::move(book.seen);
    m_seenRevision = *revision;
    m_mustList = false;
    return std::move(book.people);
}

Result<std::vector<OutsideChange>> EdsSession::takeChangesFromOutside()
{
    if (auto opened = open(); !opened)
        return opened.error();
    const auto revision = m_book.revision();
    if (!revision)
        return revision.error();
    if (!m_mustList && !revision->isEmpty() && *revision == m_seenRevision)
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
    std::size_t total = 0;
    if (auto read = readBook(*revision, take, total); !read)
        return read.error();
    for (auto it = m_seen.cbegin(); it != m_seen.cend(); ++it) {
        if (!seen.contains(it.key()))
            changes.push_back({QString::fromUtf8(it.key()), nullptr});
    }
    m_seen = std::move(seen);
    m_seenRevision = *revision;
    m_mustList = false;
    return changes;
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
