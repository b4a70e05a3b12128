// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/RowBlocks.h"

#include "export/iwa/WriteAll.h"

#include <algorithm>
#include <deque>
#include <future>

namespace {

constexpr std::size_t kRowsInBlock = 512; // worth a thread's start, and little enough for the processor's cache
constexpr unsigned kMaxThreads = 8; // from there on the target is what takes the time

/// A block of rows that is being made, or waits for its turn to be written.
struct Block
{
    Utf8Buffer text;
    std::future<void> made; // last, so that a block waits for its thread before it goes
};

} // namespace

Result<void> writeRowBlocks(QIODevice &target, std::span<const PersonRow> rows,
    const std::function<void(Utf8Buffer &text, std::span<const PersonRow> block)> &make)
{
    const auto begin = [&](Block &block) {
        if (rows.empty())
            return;
        const auto own = rows.first(std::min(rows.size(), kRowsInBlock));
        rows = rows.subspan(own.size());
        block.text.clear();
        block.made = std::async(std::launch::async, [&make, &block, own] { make(block.text, own); });
    };
    std::deque<Block> blocks(std::clamp(std::thread::hardware_concurrency(), 1U, kMaxThreads));
    for (Block &block : blocks)
        begin(block);
    for (std::size_t next = 0; blocks[next].made.valid(); next = (next + 1) % blocks.size()) {
        Block &block = blocks[next];
        block.made.get();
        if (auto written = writeAll(target, block.text.bytes()); !written)
            return written;
        begin(block);
    }
    return {};
}
