// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/RowBlocks.h"

#include "export/office/WriteAll.h"

#include <algorithm>
#include <condition_variable>
#include <future>
#include <mutex>
#include <thread>
#include <vector>

namespace {

constexpr std::size_t kRowsInBlock = 512; // little enough to stay in the processor's cache until it is written
constexpr std::size_t kMaxThreads = 8; // from there on the target is what takes the time
constexpr std::size_t kSpareBlocks = 6; // so that nobody waits for a thread that the system holds up

/// The work of all threads: each makes one block after another, and who ends the one that is next writes what is ready.
/// Threads that were started, or woken, for each block kept hardly more than one processor busy.
class BlockWork
{
public:
    using Make = std::function<void(Utf8Buffer &text, std::span<const PersonRow> block)>;

    BlockWork(QIODevice &target, std::span<const PersonRow> rows, const Make &make)
        : m_target(target)
        , m_rows(rows)
        , m_make(make)
        , m_count((rows.size() + kRowsInBlock - 1) / kRowsInBlock)
        , m_threads(std::max<std::size_t>(
              1, std::min<std::size_t>({std::thread::hardware_concurrency(), m_count, kMaxThreads})))
        , m_blocks(m_threads + kSpareBlocks)
    { }

    Result<void> run()
    {
        std::vector<std::future<void>> others;
        for (std::size_t i = 1; i < m_threads; ++i)
            others.push_back(std::async(std::launch::async, [this] { work(); }));
        work();
        for (auto &other : others)
            other.get();
        return m_result;
    }

private:
    struct Block
    {
        Utf8Buffer text;
        bool isMade = false;
    };
    using Lock = std::unique_lock<std::mutex>;

    void work()
    {
        Lock lock(m_mutex);
        try {
            while (awaitPlace(lock)) {
                const std::size_t number = m_begun++;
                Block &block = blockOf(number);
                lock.unlock();
                const std::size_t first = number * kRowsInBlock;
                block.text.clear();
                m_make(block.text, m_rows.subspan(first, std::min(kRowsInBlock, m_rows.size() - first)));
                lock.lock();
                block.isMade = true;
                if (!m_isWriting)
                    writeMade(lock);
            }
        } catch (...) {
            if (!lock)
                lock.lock();
            m_isOver = true;
            m_changed.notify_all();
            throw;
        }
    }

    /// Whether another block is to be made.
    bool awaitPlace(Lock &lock)
    {
        m_changed.wait(
            lock, [this] { return m_isOver || m_begun == m_count || m_begun - m_written < m_blocks.size(); });
        return !m_isOver && m_begun < m_count;
    }

    void writeMade(Lock &lock)
    {
        m_isWriting = true;
        for (Block *block = &blockOf(m_written); block->isMade && !m_isOver; block = &blockOf(m_written)) {
            lock.unlock();
            auto written = writeAll(m_target, block->text.bytes());
            lock.lock();
            if (!written) {
                m_isOver = true;
                m_result = std::move(written);
            }
            block->isMade = false;
            ++m_written;
            m_changed.notify_all();
        }
        m_isWriting = false;
    }

    Block &blockOf(std::size_t number) { return m_blocks[number % m_blocks.size()]; }

    QIODevice &m_target; // by one thread at a time
    const std::span<const PersonRow> m_rows;
    const Make &m_make;
    const std::size_t m_count;
    const std::size_t m_threads;

    std::mutex m_mutex; // of what follows, but for the text of a block that is being made or written
    std::condition_variable m_changed;
    std::vector<Block> m_blocks;
    std::size_t m_begun = 0;
    std::size_t m_written = 0;
    bool m_isWriting = false;
    bool m_isOver = false; // before the last block
    Result<void> m_result;
};

} // namespace

Result<void> writeRowBlocks(QIODevice &target, std::span<const PersonRow> rows,
    const std::function<void(Utf8Buffer &text, std::span<const PersonRow> block)> &make)
{
    return BlockWork(target, rows, make).run();
}
