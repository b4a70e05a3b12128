// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/AddressBookStore.h"

#include <memory>

class PrivateCopy;

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
    static Result<std::unique_ptr<SqliteStore>> open(const QString &path, Clock clock = currentTime);
    /// A file that is not to be written, because of @p reason. SQLite needs to write even to read, so a private copy is
    /// opened; it shows the file as it is now.
    static Result<std::unique_ptr<SqliteStore>> openReadOnly(const QString &path, Error reason);
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
    bool canWrite() const override;
    Error readOnlyReason() const override;
    QString name() const override;
    /// Of a read-only one the copy, so that backups hold its history.
    QString file() const override;

private:
    class Private;
    explicit SqliteStore(std::unique_ptr<Private> d);
    static Result<std::unique_ptr<SqliteStore>> openFile(
        const QString &file, Clock clock, std::unique_ptr<PrivateCopy> copy, const QString &name);
    std::unique_ptr<Private> d;
};
