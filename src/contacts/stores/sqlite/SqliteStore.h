// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/AddressBookStore.h"
#include "contacts/stores/sqlite/DatabaseBytes.h"

class PrivateCopy;
class QFileSystemWatcher;

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
    std::vector<QString> damagedPeople() const override { return m_damagedPeople; }
    Result<void> commit(const std::vector<RecordChange> &changes) override;
    Result<std::vector<StoredRecord>> takeChangesFromOutside() override;
    void setChangeListener(std::function<void()> listener) override;
    Result<std::vector<ChangeSummary>> history() override;
    Result<ChangeStep> historyStep(const QString &causeId) override;
    Result<std::vector<Ignored>> ignored() override;
    Result<void> changeIgnored(const std::vector<Ignored> &added, const QStringList &removedIds) override;
    bool canWrite() const override { return !m_copy; }
    Error readOnlyReason() const override { return m_readOnlyReason; }
    QString name() const override { return m_name; }
    /// For a read-only one the private copy, so that backups include its history.
    QString file() const override;
    bool copyTo(const QString &path) override;

private:
    struct Connection;
    SqliteStore(QString path, QString name, FileOnDisk book, std::unique_ptr<Connection> connection, Clock clock);
    static Result<std::unique_ptr<SqliteStore>> openFile(
        const QString &file, Clock clock, std::unique_ptr<PrivateCopy> copy, const QString &name);

    /// Runs @p work, which returns a Result, on the file that has the address book's name.
    template <typename Work> auto guarded(Work work) -> decltype(work());
    /// Runs @p work, which writes, until what it wrote is in the file.
    template <typename Work> Result<void> written(Work work);
    Result<void> commitOnce(const std::vector<RecordChange> &changes);
    bool hasItsFile() const { return m_book != FileOnDisk() && m_book == FileOnDisk::named(m_path); }
    bool hasItsFiles() const;
    void leaveMovedFile();
    Result<void> reopenIfLogIsGone();

    std::unique_ptr<PrivateCopy> m_copy; // null: it may be written
    Error m_readOnlyReason;
    const QString m_path;
    const QString m_name; // for messages: of a copy, the original's path
    const Clock m_clock;
    std::unique_ptr<Connection> m_connection; // null: could not be opened again
    const FileOnDisk m_book; // what the connection has open
    FileOnDisk m_log;
    int m_commits = 0;
    std::vector<QString> m_damagedPeople;
    qint64 m_seenHistory = 0; // id of the last row of history that this store knows of
    qint64 m_seenDataVersion = -1;
    QFileSystemWatcher *m_watcher = nullptr; // belongs to the thread of its event loop
};
