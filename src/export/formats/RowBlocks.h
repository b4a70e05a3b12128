// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "export/formats/Utf8Buffer.h"
#include "table/grid/PersonRows.h"

#include <functional>

class QIODevice;

/// Writes the text of many rows to @p target in their order. @p make turns some rows that follow one another into text;
/// it is called on as many threads at a time as the machine has processors, and one of them at a time writes. Holds
/// the text of a few thousand rows, however many there are. After a write that failed nothing more is begun.
Result<void> writeRowBlocks(QIODevice &target, std::span<const PersonRow> rows,
    const std::function<void(Utf8Buffer &text, std::span<const PersonRow> block)> &make);
