// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/cards/RecordJsonReader.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <array>
#include <functional>

/// What stands in `contact.digest`: of a uid and a document as they are stored, byte by byte. It tells accidents, such
/// as a flipped bit; somebody who means to deceive can make one that fits.
using Digest = std::array<char, 8>;
Digest digestOf(std::string_view uid, std::string_view document);

/// The name of a picture, which is its check: its SHA-256.
std::string pictureNameOf(const QByteArray &picture);

/// What becomes of a person of whom a part cannot be read: an error, or one without that part.
enum class Damage { Refuse, PassOver };

/// Whether a person's row is as it was saved, which its digest tells. Unknown: it has none, as somebody wrote it by
/// hand or with a program that did not make digests yet.
enum class Proof { Fits, Unknown, Differs };

/// Whether pictures are held against their names, which takes its time.
enum class Pictures { AsTheyAre, Checked };

/// Reads records of an address book file. Errors of SQLite are thrown as SQLite::Exception; what a document gets wrong
/// is an Error of kind Invalid that names the person.
class RecordReader
{
public:
    explicit RecordReader(SQLite::Database &database, Damage damage = Damage::Refuse);

    /// Hands over everybody in the order of adding, on this thread; documents are read on all processors. Inside one
    /// transaction, or what is read may not belong together.
    Result<void> everybody(const std::function<void(StoredRecord, Proof)> &take);
    /// Holds everybody against digest and picture, and tells who is not as saved, or cannot be read, and why (as an
    /// Error that names the person). Inside one transaction.
    /// @return how many people there are
    qint64 check(const std::function<void(const QString &uid, const Error &)> &tell);

    struct Row
    {
        qint64 id = 0; ///< 0: there is no such person
        QString uid;
        std::string document;
        Proof proof = Proof::Unknown;
    };
    Row rowOf(const QString &uid);
    /// These two give a null record where there is no such person.
    Result<PersonRecordPtr> personWithUid(const QString &uid);
    Result<StoredRecord> person(qint64 id);
    /// Damage::PassOver: how many people came without their picture or without a digest that fits.
    qint64 incompleteCount() const { return m_incompleteCount; }

    /// What somebody's document says. Invalid, too, when a later version of the program wrote something that this one
    /// would lose.
    Result<PersonRecordPtr> wholeRecord(
        const QString &uid, std::string_view document, Pictures pictures = Pictures::Checked);
    /// Why a row is no longer what was saved; no error where it is, as far as can be told.
    Result<void> asSaved(const Row &row);

private:
    struct Round;
    Result<PersonRecordPtr> finished(const QString &uid, Result<RecordJsonReader::Person> person, Pictures pictures);
    QByteArray pictureNamed(const std::string &name);

    SQLite::Database &m_database;
    Damage m_damage;
    qint64 m_incompleteCount = 0;
    bool m_isPictureLost = false; // of the person that was read last
    SQLite::Statement m_rowOfUid;
    SQLite::Statement m_rowOfId;
    SQLite::Statement m_picture;
    RecordJsonReader m_reader;
};
