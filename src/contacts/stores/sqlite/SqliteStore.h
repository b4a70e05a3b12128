// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/AddressBookStore.h"
#include "contacts/stores/sqlite/Migration.h"

#include <memory>

/// An address book in one SQLite file (docs/store.md describes its tables). Several programs may have it open: writers
/// wait for each other for some seconds, and nobody overwrites what he has not seen. What commit() acknowledged is on
/// the disk and survives a kill of the process or of the machine at any moment.
class SqliteStore : public AddressBookStore
{
public:
    /// Opens the address book, or makes an empty one where there is no file or an empty one. A new file is readable
    /// by its owner only; missing folders are made. Refused, with the file as it was:
    /// Invalid: a folder, no address book, a damaged one, one written by a newer version of the program;
    /// ReadOnly: it may not be read and written; Io: it cannot be made. A file of an earlier format is brought to the
    /// present one first.
    static Result<std::unique_ptr<SqliteStore>> open(
        const QString &path, Clock clock = currentTime, Migration::Backup ofOldFormat = Migration::Backup::Keep);
    /// Where the user's address book is if he names none: in the user's data folder (XDG Base Directory).
    static QString defaultPath();
    ~SqliteStore() override;

    Result<std::vector<StoredRecord>> loadAll() override;
    /// The people who, in the last load, were not as they were saved: they can be read, but not changed.
    std::vector<QString> damagedPeople() const override;
    Result<void> commit(const std::vector<RecordChange> &changes) override;
    Result<std::vector<OutsideChange>> takeChangesFromOutside() override;
    void setChangeListener(std::function<void()> listener) override;
    Result<std::vector<ChangeSummary>> history() override;
    Result<ChangeStep> historyStep(const QString &causeId) override;
    bool canWrite() const override { return true; }
    QString name() const override;
    QString file() const override;

private:
    class Private;
    explicit SqliteStore(std::unique_ptr<Private> d);
    std::unique_ptr<Private> d;
};
