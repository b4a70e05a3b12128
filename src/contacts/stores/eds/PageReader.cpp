// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/PageReader.h"

#include "contacts/stores/eds/StoredCard.h"

#include <algorithm>
#include <iterator>
#include <thread>

PageReader::~PageReader()
{
    const Lock lock(m_mutex);
    m_isComplete = true;
    m_begun = m_pages.size();
    m_changed.notify_all();
}

void PageReader::add(std::vector<EdsBook::Card> cards)
{
    constexpr std::size_t kMostWaiting = 64; // texts of so many pages may lie about
    static const std::size_t processors = std::max(2U, std::thread::hardware_concurrency());
    Lock lock(m_mutex);
    m_pages.push_back({std::move(cards), {}, {}});
    if (m_threads.size() < processors - 1)
        m_threads.push_back(std::async(std::launch::async, [this] { work(); }));
    else
        m_changed.notify_one();
    if (m_pages.size() - m_begun > kMostWaiting)
        readNext(lock);
}

PageReader::Book PageReader::finish()
{
    {
        const Lock lock(m_mutex);
        m_isComplete = true;
        m_changed.notify_all();
    }
    work();
    for (auto &thread : m_threads)
        thread.get();
    m_threads.clear();
    std::size_t count = 0;
    for (const Page &page : m_pages)
        count += page.people.size();
    Book book;
    book.people.reserve(count);
    book.seen.reserve(qsizetype(count));
    for (Page &page : m_pages) {
        for (std::size_t i = 0; i < page.people.size(); ++i)
            book.seen.insert(page.cards[i].uid, page.digests[i]);
        std::ranges::move(page.people, std::back_inserter(book.people));
    }
    return book;
}

void PageReader::read(Page &page)
{
    std::ranges::sort(page.cards, {}, &EdsBook::Card::uid);
    const std::vector<StoredCard::Read> records = StoredCard::read(page.cards);
    page.people.reserve(records.size());
    page.digests.reserve(records.size());
    std::size_t kept = 0;
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (!records[i].record)
            continue;
        page.people.push_back({QString::fromUtf8(page.cards[i].uid), records[i].record});
        page.digests.push_back(records[i].digest);
        page.cards[kept].uid = page.cards[i].uid;
        page.cards[kept++].text.clear();
    }
    page.cards.resize(kept);
}

void PageReader::readNext(Lock &lock)
{
    Page &page = m_pages[m_begun++];
    lock.unlock();
    read(page);
    lock.lock();
}

void PageReader::work()
{
    Lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_isComplete || m_begun < m_pages.size(); });
        if (m_begun == m_pages.size())
            return;
        readNext(lock);
    }
}
