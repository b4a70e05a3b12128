// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/JsonLinesReader.h"
#include "fuzz/RecordPromises.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    JsonLinesReader reader(bytesOf(data, size));
    readAll(reader);
    return 0;
}
