// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/RecordPromises.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    VCardReader reader(bytesOf(data, size));
    readAll(reader);

    VCardReader whole(bytesOf(data, size));
    VCardReader inPieces(bytesOf(data, size), 1);
    while (const auto person = whole.next().record) {
        const auto same = inPieces.next().record;
        demand(same && *same == *person, "a file that is read in pieces says the same");
    }
    demand(!inPieces.next().record, "it says no more");
    demand(whole.takeProblems().size() == inPieces.takeProblems().size(), "it has the same problems");
    return 0;
}
