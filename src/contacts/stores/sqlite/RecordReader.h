// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/cards/RecordJsonReader.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <array>
#include <functional>

/// The value of `contact.digest`, computed from the stored bytes of uid and document. Detects accidents such as a
/// flipped bit, not forgery.
using Digest = std::array<char, 8>;
Digest digestOf(std::string_view uid, std::string_view document);

/// A picture's name, its SHA-256, which also checks it.
std::string pictureNameOf(const QByteArray &picture);

/// For a person who cannot be read completely: an error, or the person without that part.
enum class Damage { Refuse, PassOver };

/// Whether a row's digest matches. Unknown: it has none, being written by hand or by a program from before digests.
enum class Proof { Fits, Unknown, Differs };

/// Whether pictures are checked against their names, which takes time.
enum class Pictures { AsTheyAre, Checked };

/// Reads records of an address book file. SQLite's errors are thrown as SQLite::Exception; a bad document is an Error
/// of kind Invalid that names the person.
class RecordReader
{
public:
    explicit RecordReader(SQLite::Database &database, Damage damage = Damage::Refuse);

    /// Passes on everyone in the order of adding, on this thread; documents are parsed on all processors. Call inside
    /// one transaction for a consistent result.
    Result<void> everybody(const std::function<void(StoredRecord, Proof)> &take);
    /// Checks all digests and pictures, and reports each damaged or unreadable person with an Error that names the
    /// person. Call inside one transaction.
    /// @return how many people there are
    qint64 check(const std::function<void(const QString &uid, const Error &)> &tell);

    struct Row
    {
        qint64 id = 0; ///< 0: no such person
        QString uid;
        std::string document;
        Proof proof = Proof::Unknown;
    };
    Row rowOf(const QString &uid);
    /// Both return a null record if there is no such person.
    Result<PersonRecordPtr> personWithUid(const QString &uid);
    Result<StoredRecord> person(qint64 id);
    /// With Damage::PassOver: how many people lack their picture or a matching digest.
    qint64 incompleteCount() const { return m_incompleteCount; }

    /// The record of a document. Invalid also if a newer version of the program wrote something that this one would
    /// lose.
    Result<PersonRecordPtr> wholeRecord(
        const QString &uid, std::string_view document, Pictures pictures = Pictures::Checked);
    /// An error if the row is known to be damaged.
    Result<void> asSaved(const Row &row);

private:
    Result<PersonRecordPtr> finished(const QString &uid, Result<RecordJsonReader::Person> person, Pictures pictures);
    QByteArray pictureNamed(const std::string &name);

    SQLite::Database &m_database;
    Damage m_damage;
    qint64 m_incompleteCount = 0;
    bool m_isPictureLost = false; // of the person read last
    SQLite::Statement m_rowOfUid;
    SQLite::Statement m_rowOfId;
    SQLite::Statement m_picture;
    RecordJsonReader m_reader;
};
