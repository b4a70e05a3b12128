// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/AddressBookStore.h"

#include <memory>

class PrivateCopy;

/// An address book in one SQLite file (docs/store.md). Several programs may have it open: writers wait for each other
/// for some seconds, and nothing unseen is overwritten. Acknowledged commits are on the disk and survive a kill of the
/// process or the machine at any time.
class SqliteStore : public AddressBookStore
{
public:
    /// Opens the address book, or creates an empty one if the file is missing or empty. A new file is private to its
    /// owner; missing folders are created; earlier formats are migrated. Errors leave the file unchanged:
    /// Invalid: a folder, no address book, a damaged one, or one written by a newer version of the program;
    /// ReadOnly: it cannot be read and written; Io: it cannot be created.
    static Result<std::unique_ptr<SqliteStore>> open(const QString &path, Clock clock = currentTime);
    /// A file that must not be written, because of @p reason. SQLite writes even to read, so a private copy is opened;
    /// it shows the file as it is now.
    static Result<std::unique_ptr<SqliteStore>> openReadOnly(const QString &path, Error reason);
    /// The default address book in the user's data folder (XDG Base Directory).
    static QString defaultPath();
    ~SqliteStore() override;

    Result<std::vector<StoredRecord>> loadAll() override;
    /// The people found damaged by the last load: they can be read, but not changed.
    std::vector<QString> damagedPeople() const override;
    Result<void> commit(const std::vector<RecordChange> &changes) override;
    Result<std::vector<OutsideChange>> takeChangesFromOutside() override;
    void setChangeListener(std::function<void()> listener) override;
    Result<std::vector<ChangeSummary>> history() override;
    Result<ChangeStep> historyStep(const QString &causeId) override;
    Result<std::vector<Ignored>> ignored() override;
    Result<void> changeIgnored(const std::vector<Ignored> &added, const QStringList &removedIds) override;
    bool canWrite() const override;
    Error readOnlyReason() const override;
    QString name() const override;
    /// For a read-only one the private copy, so that backups include its history.
    QString file() const override;
    bool copyTo(const QString &path) override;

private:
    class Private;
    explicit SqliteStore(std::unique_ptr<Private> d);
    static Result<std::unique_ptr<SqliteStore>> openFile(
        const QString &file, Clock clock, std::unique_ptr<PrivateCopy> copy, const QString &name);
    std::unique_ptr<Private> d;
};
