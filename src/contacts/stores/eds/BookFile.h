// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/stores/eds/EdsBook.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>

#include <memory>
#include <optional>

/// The file in which the daemon keeps a book of its own (SQLite; seen with 3.46), read beside the daemon, which takes
/// five times as long to say the same over the bus. Nothing is ever written. Not libebook's own way to do this
/// (connect_direct): that makes the daemon's file layer the default of SQLite in the whole process, and it tells the
/// disk of changes later than it says so.
///
/// The daemon waits with its writes as long as one of these is there, and gives a write up after 15 s.
class BookFile
{
public:
    /// Null where @p path or @p revision is empty, where there is no such file, where it cannot be read just now or is
    /// of another kind, and where it holds another state of the book than @p revision, as the daemon calls it: of a
    /// book of the same name in other folders, or before or after a change. The daemon has to be asked then.
    static std::unique_ptr<BookFile> open(const QString &path, const QByteArray &revision);
    BookFile(const BookFile &) = delete;
    BookFile &operator=(const BookFile &) = delete;

    /// Everybody in it.
    std::size_t count() const { return m_count; }
    /// The next cards by uid, as the daemon would give them; fewer than @p most at the end only, then none. Absent
    /// where the file cannot be read on from there; the next call is undefined then.
    std::optional<std::vector<EdsBook::Card>> next(std::size_t most);

private:
    explicit BookFile(const QString &path);

    SQLite::Database m_database;
    SQLite::Transaction m_state; // all reading is of one state of the book
    QByteArray m_revision;
    std::size_t m_count = 0;
    SQLite::Statement m_cards;
};
