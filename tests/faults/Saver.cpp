// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/SqliteStore.h"
#include "faults/SavedStates.h"

#include <cstdlib>
#include <sqlite3.h>
#include <unistd.h>

namespace {

/// So that a few saves fill the log, and it is moved into the file and begun again between them.
int makeLogsShort(sqlite3 *database, char ** /*error*/, const void * /*api*/)
{
    constexpr int kPages = 10;
    return sqlite3_wal_autocheckpoint(database, kPages);
}

} // namespace

/// Saver ADDRESS_BOOK SEED DONE SAVES: goes on where DONE saves ended and makes SAVES more; a byte on standard output
/// for each that was acknowledged. Ends with 1 at the first that is refused.
int main(int argc, char *argv[])
{
    if (argc != 5)
        return 2;
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(&makeLogsShort));
    SavedStates states(unsigned(std::atoi(argv[2])));
    for (int i = std::atoi(argv[3]); i > 0; --i)
        states.next();
    const auto store = SqliteStore::open(QString::fromLocal8Bit(argv[1]));
    if (!store)
        return 1;
    for (int i = std::atoi(argv[4]); i > 0; --i) {
        if (!(*store)->commit(states.next()) || ::write(STDOUT_FILENO, ".", 1) != 1)
            return 1;
    }
    return 0;
}
