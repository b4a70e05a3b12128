// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABAddressBook.h"
#include "contacts/cards/RecordSource.h"

#include <functional>

enum class RecordFormat { VCard, JsonLines };

/// What the bytes of a file look like; anything that is not JSON counts as vCard.
RecordFormat formatOfContent(const QByteArray &content);
std::unique_ptr<RecordSource> recordSource(const QByteArray &content, RecordFormat format);

/// Adds the people of files to an address book; saving is the caller's. Importing a file twice changes nothing: people
/// without a uid get one made from their content.
class RecordImporter
{
public:
    /// What happens to a record whose uid is taken by one with other content.
    enum class OnOtherContent { AddUnderNewUid, Replace };
    /// Told how many bytes of how many are read; returns false to stop.
    using Progress = std::function<bool(qint64 done, qint64 total)>;

    RecordImporter(ABAddressBook &book, OnOtherContent onOtherContent);

    /// Reads @p source to its end, or until @p progress stops it (false). What was read so far is in the book, unsaved.
    bool addAll(RecordSource &source, const Progress &progress);

    /// People added or replaced.
    qint64 importedCount() const { return m_imported; }
    /// Those of them that are new in the book.
    const std::vector<ABPersonPtr> &addedPeople() const { return m_added; }
    /// People that were skipped because the book holds them with the same content.
    qint64 alreadyThereCount() const { return m_alreadyThere; }

private:
    void add(const ImportedRecord &imported, const QString &uid);

    ABAddressBook &m_book;
    OnOtherContent m_onOtherContent;
    qint64 m_imported = 0;
    std::vector<ABPersonPtr> m_added;
    qint64 m_alreadyThere = 0;
};

/// What became of the import of one file.
struct ImportReport
{
    qint64 imported = 0;
    qint64 alreadyThere = 0;
    std::vector<ImportProblem> problems; ///< what was passed over, in file order
    bool cancelled = false; ///< nothing was imported
    std::optional<Error> error; ///< why nothing could be saved; nothing was imported then
};

/// Reads everything first, then adds and saves it, so that the address book is changed as a whole or not at all, while
/// others go on working with it. @p progress counts the reading.
ImportReport importWhole(ABAddressBook &book, const QByteArray &content, const RecordImporter::Progress &progress);
