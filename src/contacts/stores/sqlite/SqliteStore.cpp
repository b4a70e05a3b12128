// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/SqliteStore.h"

#include "contacts/model/Utf8Text.h"
#include "contacts/stores/sqlite/AddressBookFile.h"
#include "contacts/stores/sqlite/HistoryTable.h"
#include "contacts/stores/sqlite/IgnoredTable.h"
#include "contacts/stores/sqlite/LogFile.h"
#include "contacts/stores/sqlite/Migration.h"
#include "contacts/stores/sqlite/PrivateCopy.h"
#include "contacts/stores/sqlite/RecordWriter.h"
#include "contacts/stores/sqlite/Schema.h"

#include <SQLiteCpp/Backup.h>
#include <SQLiteCpp/Transaction.h>

#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QLoggingCategory>
#include <QScopeGuard>
#include <QStandardPaths>

#include <sqlite3.h>

Q_LOGGING_CATEGORY(lcStore, "peoplenook.store")

namespace {

/// From how many changes on a commit is worth a cache that holds the whole index of uids, which it writes all over.
constexpr std::size_t kLargeCommit = 1000;

/// After how many commits the history is looked through for what has become too old; the first one of a run does too.
constexpr int kCommitsPerPruning = 256;

} // namespace

struct SqliteStore::Connection
{
    explicit Connection(SQLite::Database &&opened)
        : database(std::move(opened)), reader(database), writer(database, reader)
    { }

    qint64 scalar(const char *sql) { return database.execAndGet(sql).getInt64(); }
    qint64 newestHistory() { return scalar("SELECT coalesce(max(id), 0) FROM history"); }
    /// Changes with every commit of another connection, never with our own. Inside a transaction: as of its begin.
    qint64 dataVersion() { return scalar("PRAGMA data_version"); }

    SQLite::Database database;
    RecordReader reader;
    RecordWriter writer;
};

SqliteStore::SqliteStore(
    QString path, QString name, FileOnDisk book, std::unique_ptr<Connection> connection, Clock clock)
    : m_path(std::move(path))
    , m_name(std::move(name))
    , m_clock(std::move(clock))
    , m_connection(std::move(connection))
    , m_book(book)
    , m_log(FileOnDisk::named(LogFile::nameFor(m_path)))
{ }

SqliteStore::~SqliteStore()
{
    SqliteStore::setChangeListener({});
    leaveMovedFile();
}

template <typename Work> auto SqliteStore::guarded(Work work) -> decltype(work())
{
    try {
        if (auto ready = reopenIfLogIsGone(); !ready)
            return ready.error();
        return work();
    } catch (const SQLite::Exception &exception) {
        return AddressBookFile::errorOf(exception, m_name);
    }
}

template <typename Work> Result<void> SqliteStore::written(Work work)
{
    if (m_copy)
        return m_readOnlyReason;
    constexpr int kAttempts = 2; // somebody may take the log away just while it is written
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        Result<void> done = guarded(work);
        if (!done || hasItsFiles())
            return done;
    }
    return Error{ErrorKind::Unavailable, m_name % QStringLiteral(": another program keeps taking its log away")};
}

bool SqliteStore::hasItsFiles() const
{
    return hasItsFile() && m_log == FileOnDisk::named(LogFile::nameFor(m_path));
}

/// A file of another name keeps all that was saved, and its log does not wait for the next file of this name.
void SqliteStore::leaveMovedFile()
{
    if (!m_connection || hasItsFile())
        return;
    int written = 0;
    int inLog = -1;
    sqlite3_wal_checkpoint_v2(m_connection->database.getHandle(), nullptr, SQLITE_CHECKPOINT_PASSIVE, &inLog, &written);
    if (inLog == written) // else another program has yet to do so
        LogFile::removeOrphan(m_path, m_log);
}

/// Whatever closes a descriptor of the file in this process takes back SQLite's locks on it, and another program then
/// clears the log away. What is written to such a log is lost.
Result<void> SqliteStore::reopenIfLogIsGone()
{
    if (m_connection && hasItsFiles())
        return {};
    leaveMovedFile();
    if (!hasItsFile())
        return AddressBookFile::failure(m_name,
            QStringLiteral("the address book was moved, replaced or removed while it was open; nothing can be read "
                           "from it or saved in it any more"),
            ErrorKind::Unavailable);
    qCWarning(lcStore).noquote() << m_name % QStringLiteral(": its log was removed by another program; opened again");
    // The lost log is not to be written into the file, which another program has gone on with.
    if (m_connection)
        sqlite3_db_config(m_connection->database.getHandle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    m_connection.reset(); // first: connections of one process share what they know of a log
    m_connection = std::make_unique<Connection>(AddressBookFile::connect(m_path));
    m_log = FileOnDisk::named(LogFile::nameFor(m_path));
    m_seenDataVersion = -1;
    if (m_watcher)
        QMetaObject::invokeMethod(
            m_watcher, [watched = m_watcher, logName = LogFile::nameFor(m_path)] { watched->addPath(logName); });
    return {};
}

QString SqliteStore::defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        % QStringLiteral("/peoplenook/addressbook.sqlite");
}

Result<std::unique_ptr<SqliteStore>> SqliteStore::open(const QString &path, Clock clock)
{
    // A link is followed once and for all, so that replacing an empty file never replaces the link.
    const QString canonical = QFileInfo(path).canonicalFilePath();
    const QString file = canonical.isEmpty() ? QFileInfo(path).absoluteFilePath() : canonical;
    const QFileInfo info(file);
    if (!info.exists() || (info.isFile() && info.size() == 0)) {
        if (auto created = AddressBookFile::create(file); !created)
            return created.error();
    }
    if (auto checked = AddressBookFile::check(file); !checked)
        return checked.error();
    return openFile(file, std::move(clock), nullptr, file);
}

Result<std::unique_ptr<SqliteStore>> SqliteStore::openReadOnly(const QString &path, Error reason)
{
    const QString canonical = QFileInfo(path).canonicalFilePath(); // the log is where the file is, not beside a link
    const QString file = canonical.isEmpty() ? path : canonical;
    if (auto readable = AddressBookFile::checkReadable(file); !readable)
        return readable.error();
    auto copy = PrivateCopy::of(file);
    if (!copy)
        return copy.error();
    const QString name = (*copy)->path();
    auto store = openFile(name, currentTime, std::move(*copy), file);
    if (store)
        (*store)->m_readOnlyReason = std::move(reason);
    return store;
}

/// @p copy: of which the file is, if it is one
Result<std::unique_ptr<SqliteStore>> SqliteStore::openFile(
    const QString &file, Clock clock, std::unique_ptr<PrivateCopy> copy, const QString &name)
{
    try {
        // Before it is opened: a file that loses its name from here on is never taken for the one that has it then.
        const FileOnDisk book = FileOnDisk::named(file);
        if (auto settled = LogFile::putAsideUnrelated(file); !settled)
            return settled.error();
        SQLite::Database database = AddressBookFile::connect(file);
        // The version in the file's header may be older than the one in its write-ahead log.
        const int version = database.execAndGet("PRAGMA user_version").getInt();
        if (auto known = AddressBookFile::checkVersion(version, name); !known)
            return known.error();
        if (version < Schema::kVersion) {
            qCInfo(lcStore).noquote() << name % QStringLiteral(": is brought to the present format");
            const auto backup = copy ? Migration::Backup::None : Migration::Backup::Keep;
            if (auto migrated = Migration::migrate(database, file, backup); !migrated)
                return migrated.error();
        }
        std::unique_ptr<SqliteStore> store(
            new SqliteStore(file, name, book, std::make_unique<Connection>(std::move(database)), std::move(clock)));
        store->m_copy = std::move(copy);
        return store;
    } catch (const SQLite::Exception &exception) {
        return AddressBookFile::errorOf(exception, name);
    }
}

QString SqliteStore::file() const
{
    return hasItsFile() ? m_path : QString();
}

bool SqliteStore::copyTo(const QString &path)
{
    try {
        SQLite::Database copy(QFile::encodeName(path).constData(), SQLite::OPEN_READWRITE);
        return m_connection && SQLite::Backup(copy, m_connection->database).executeStep(-1) == SQLITE_DONE;
    } catch (const SQLite::Exception &) {
        return false;
    }
}

Result<std::vector<StoredRecord>> SqliteStore::loadAll()
{
    return guarded([this]() -> Result<std::vector<StoredRecord>> {
        // One read transaction, so that all tables are seen as they were at one moment.
        SQLite::Transaction transaction(m_connection->database);
        std::vector<StoredRecord> people;
        m_damagedPeople.clear();
        const auto read = m_connection->reader.everybody([this, &people](StoredRecord person, Proof proof) {
            if (proof == Proof::Differs)
                m_damagedPeople.push_back(person.uid);
            people.push_back(std::move(person));
        });
        if (!read)
            return AddressBookFile::failure(m_name, read.error().text, read.error().kind);
        m_seenHistory = m_connection->newestHistory();
        m_seenDataVersion = m_connection->dataVersion();
        transaction.commit();
        return people;
    });
}

Result<void> SqliteStore::commit(const std::vector<RecordChange> &changes)
{
    return written([&] { return commitOnce(changes); });
}

Result<void> SqliteStore::commitOnce(const std::vector<RecordChange> &changes)
{
    SQLite::Database &database = m_connection->database;
    const bool isLarge = changes.size() >= kLargeCommit;
    if (isLarge)
        database.exec("PRAGMA cache_size = -65536");
    const auto givenBack = qScopeGuard([&] {
        if (isLarge)
            database.tryExec("PRAGMA cache_size = -2000; PRAGMA shrink_memory");
    });
    SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
    const QDateTime now = m_clock();
    const bool othersWereFirst = m_connection->newestHistory() != m_seenHistory;
    m_connection->writer.beginSave(HistoryTable::timeText(now));
    for (const auto &change : changes) {
        if (auto applied = m_connection->writer.apply(change); !applied)
            return applied;
    }
    if (m_commits++ % kCommitsPerPruning == 0)
        HistoryTable::prune(database, now);
    const qint64 newest = m_connection->newestHistory();
    transaction.commit();
    if (!othersWereFirst)
        m_seenHistory = newest;
    return {};
}

Result<std::vector<StoredRecord>> SqliteStore::takeChangesFromOutside()
{
    return guarded([this]() -> Result<std::vector<StoredRecord>> {
        SQLite::Transaction transaction(m_connection->database);
        const qint64 dataVersion = m_connection->dataVersion();
        std::vector<StoredRecord> changes;
        if (dataVersion == m_seenDataVersion)
            return changes;
        SQLite::Statement touched(
            m_connection->database, "SELECT uid FROM history WHERE id > ? GROUP BY uid ORDER BY min(id)");
        touched.bind(1, int64_t(m_seenHistory));
        while (touched.executeStep()) {
            const QString uid = textOfUtf8(touched.getColumn(0).getString());
            const auto now = m_connection->reader.personWithUid(uid);
            if (!now)
                return AddressBookFile::failure(m_name, now.error().text, now.error().kind);
            changes.push_back({uid, *now});
        }
        const qint64 newest = m_connection->newestHistory();
        transaction.commit();
        m_seenHistory = newest;
        m_seenDataVersion = dataVersion;
        return changes;
    });
}

void SqliteStore::setChangeListener(std::function<void()> listener)
{
    if (m_watcher)
        std::exchange(m_watcher, nullptr)->deleteLater();
    if (!listener)
        return;
    // Every commit is written to the log first, and the log stays as long as anybody has the address book open.
    m_watcher = new QFileSystemWatcher({LogFile::nameFor(m_path)});
    QObject::connect(
        m_watcher, &QFileSystemWatcher::fileChanged, m_watcher, [listener = std::move(listener)] { listener(); });
}

Result<std::vector<ChangeSummary>> SqliteStore::history()
{
    return guarded([this] { return Result(HistoryTable::summaries(m_connection->database)); });
}

Result<ChangeStep> SqliteStore::historyStep(const QString &causeId)
{
    return guarded([&] {
        SQLite::Transaction transaction(m_connection->database); // what a change left is looked up in several tables
        return HistoryTable::step(m_connection->database, m_connection->reader, causeId);
    });
}

Result<std::vector<Ignored>> SqliteStore::ignored()
{
    return guarded([this] { return Result(IgnoredTable::read(m_connection->database)); });
}

Result<void> SqliteStore::changeIgnored(const std::vector<Ignored> &added, const QStringList &removedIds)
{
    return written([&]() -> Result<void> {
        IgnoredTable::change(m_connection->database, added, removedIds);
        return {};
    });
}
