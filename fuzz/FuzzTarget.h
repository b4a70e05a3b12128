// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <cstdint>

/// What a fuzzer runs on any bytes, and the ordinary tests on the kept ones. Ends the program where a promise about
/// hostile input does not hold.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

inline QByteArray bytesOf(const std::uint8_t *data, std::size_t size)
{
    return {reinterpret_cast<const char *>(data), qsizetype(size)};
}

/// Ends the program unless @p holds.
inline void demand(bool holds, const char *promise)
{
    if (!holds)
        qFatal("broken: %s", promise);
}
