// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/book/Ignored.h"
#include "contacts/model/PersonRecord.h"

#include <QByteArray>

#include <functional>
#include <memory>
#include <vector>

namespace SQLite {
class Database;
}

/// What an address book holds, without its history.
struct BookContents
{
    std::vector<StoredRecord> people; ///< in the order of adding
    std::vector<Ignored> ignored;
};

/// A new address book file that gets its name only when it is complete, synced, and was read back. Until then the name
/// is unused, or an existing file unchanged.
class BackupFile
{
public:
    /// Whether an existing file of that name may be replaced.
    enum class Existing { Refuse, Replace };

    /// The whole file @p from as it is now, history included. finish() copies it, without what is changed in between.
    /// Invalid: @p from is no address book.
    static Result<std::unique_ptr<BackupFile>> copyOf(const QString &from, const QString &to, Existing existing);
    /// Writes these contents and finishes. @p fill may write an address book into the empty file first: its history is
    /// continued.
    static Result<qint64> write(const BookContents &contents, const QString &to, Existing existing,
        const std::function<void(const QString &file)> &fill = {});
    ~BackupFile();
    BackupFile(const BackupFile &) = delete;
    BackupFile &operator=(const BackupFile &) = delete;

    /// Copies, checks the copy and puts it in place. Call once. Invalid: what is copied is damaged.
    /// @return how many people it holds
    Result<qint64> finish();

private:
    BackupFile(QString to, Existing existing, QByteArray temporary);
    static Result<std::unique_ptr<BackupFile>> begin(const QString &to, Existing existing);
    Result<void> copy();

    std::unique_ptr<SQLite::Database> m_copied; // in a transaction that sees it as it was
    QString m_source; // for messages about damage
    QString m_to;
    Existing m_existing;
    QByteArray m_temporary; // its name
};

/// The damaged or unreadable people of an address book file.
struct FaultsInFile
{
    struct Person
    {
        QString uid;
        QString fault;
        QString backup; ///< the newest daily backup that has the person undamaged, if searched; empty: none
    };
    std::vector<Person> people;
    qint64 count = 0; ///< readable people in the file
    qint64 unchecked = 0; ///< of these, people without a digest
    Result<void> file; ///< the state of the file itself
};
/// Checks all digests and pictures, then the file with SQLite's checks. Migrates a file of an earlier format. An error:
/// it is no address book, or cannot be opened.
Result<FaultsInFile> faultsInFile(const QString &path);

/// Everything in the address book file at @p path, which is only read and may be on a read-only medium.
/// Invalid: it is no address book, or is damaged; Io: it is missing or cannot be read.
Result<BookContents> contentsOfFile(const QString &path);
