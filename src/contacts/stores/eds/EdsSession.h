// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/stores/eds/EdsSaver.h"

#include <memory>

/// The work of an EdsStore, on its guard's thread. The functions are AddressBookStore's; call open() first.
class EdsSession
{
public:
    /// The book's journal, history and backups get a folder in @p dataFolder.
    EdsSession(QByteArray sourceUid, QString dataFolder, const std::shared_ptr<CallGuard> &guard);

    /// Connects, to a new daemon if necessary. Returns the book's revision.
    Result<QByteArray> open();
    Result<std::vector<StoredRecord>> loadAll(const AddressBookStore::LoadProgress &progress);
    Result<void> commit(const std::vector<RecordChange> &changes);
    Result<std::vector<StoredRecord>> takeChangesFromOutside();
    EdsBook &book() { return m_book; }

private:
    using Digests = QHash<QByteArray, std::size_t>; // of cards, by uid

    Result<std::vector<StoredRecord>> changesSince(
        const Digests &known, const QByteArray &revision, const AddressBookStore::LoadProgress &progress);
    void noteOwn(const std::vector<RecordChange> &changes, int calls, const QByteArray &revisionBefore);

    EdsBook m_book;
    QString m_folder; // the program's, later the book's
    std::chrono::milliseconds m_callLimit;
    std::unique_ptr<EdsSaver> m_saver; // once the folder is known
    Digests m_seen; // as last read; 0 for a card that was written
    QByteArray m_seenRevision;
    bool m_mustList = true; // whatever the revision says
};
