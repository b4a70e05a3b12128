// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"
#include "contacts/stores/eds/EdsBook.h"

#include <QHash>

#include <condition_variable>
#include <deque>
#include <future>
#include <mutex>
#include <vector>

/// Reads pages of cards into records on all processors, while the daemon puts the next page together. For one thread;
/// the others are its own.
class PageReader
{
public:
    struct Book
    {
        std::vector<StoredRecord> people; ///< in the order of the pages, each page's by uid
        QHash<QByteArray, std::size_t> seen; ///< digests by uid
    };

    PageReader() = default;
    /// Pages that nobody began to read are dropped.
    ~PageReader();
    PageReader(const PageReader &) = delete;
    PageReader &operator=(const PageReader &) = delete;

    /// Reads a page itself where too many wait.
    void add(std::vector<EdsBook::Card> cards);
    /// Everybody in the pages, once all are read. Nothing may be added after it.
    Book finish();

private:
    struct Page
    {
        std::vector<EdsBook::Card> cards;
        std::vector<StoredRecord> people;
        std::vector<std::size_t> digests; // of these
    };
    using Lock = std::unique_lock<std::mutex>;

    static void read(Page &page);
    void readNext(Lock &lock);
    void work();

    std::mutex m_mutex; // of what follows, but for a page that is being read
    std::condition_variable m_changed;
    std::deque<Page> m_pages;
    std::size_t m_begun = 0;
    bool m_isComplete = false;
    std::vector<std::future<void>> m_threads; // last: they use all else
};
