// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/model/PersonRecord.h"

#include <QByteArray>

#include <memory>
#include <vector>

/// A new address book file that gets its name only when it is complete, on the disk, and was read back. Until then, and
/// if it never does, nothing is there under that name; what was there stays.
class BackupFile
{
public:
    /// A file with the name that shall be given is replaced only with Replace.
    enum class Existing { Refuse, Replace };

    /// The whole file @p from as it is at this moment, history included, while others go on working with it.
    /// Invalid: @p from is no address book or a damaged one.
    static Result<std::unique_ptr<BackupFile>> copyOf(const QString &from, const QString &to, Existing existing);
    /// These people, with a history that begins with them.
    static Result<std::unique_ptr<BackupFile>> of(
        const std::vector<StoredRecord> &people, const QString &to, Existing existing);
    ~BackupFile();
    BackupFile(const BackupFile &) = delete;
    BackupFile &operator=(const BackupFile &) = delete;

    /// Checks the copy and puts it in place. Once.
    /// @return how many people it holds
    Result<qint64> finish();

private:
    BackupFile(QString to, Existing existing, QByteArray temporary);
    static Result<std::unique_ptr<BackupFile>> begin(const QString &to, Existing existing);

    QString m_source; // whose people it holds, for what is said of damage
    QString m_to;
    Existing m_existing;
    QByteArray m_temporary; // its name
};

/// Who in the address book file at @p path is not as it was saved or cannot be read.
struct FaultsInFile
{
    struct Person
    {
        QString uid;
        QString fault;
        QString backup; ///< the newest daily one that holds the person whole, where it was looked for; empty: none does
    };
    std::vector<Person> people;
    qint64 count = 0; ///< of people in the file, as far as it can be read
    qint64 unchecked = 0; ///< of them, those without a digest
    Result<void> file; ///< what is wrong with the file itself
};
/// Holds everybody against digest and picture, and then the file against what SQLite can check. Brings a file of an
/// earlier format to the present one. An error: it is no address book, or cannot be opened.
Result<FaultsInFile> faultsInFile(const QString &path);

/// Everybody in the address book file at @p path, which is only read and may be on a medium that cannot be written.
/// Invalid: it is no address book, or a damaged one; Io: it is not there or cannot be read.
Result<std::vector<StoredRecord>> peopleInFile(const QString &path);
