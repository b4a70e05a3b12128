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

class SqliteStore::Private
{
public:
    Private(QString filePath, QString shownName, FileOnDisk file, Clock theClock, SQLite::Database &&database)
        : path(std::move(filePath))
        , name(std::move(shownName))
        , clock(std::move(theClock))
        , connection(std::make_unique<Connection>(std::move(database)))
        , book(file)
        , log(FileOnDisk::named(LogFile::nameFor(path)))
    { }
    ~Private() { leaveMovedFile(); }
    Private(const Private &) = delete;
    Private &operator=(const Private &) = delete;

    struct Connection
    {
        explicit Connection(SQLite::Database &&opened)
            : database(std::move(opened)), reader(database), writer(database, reader)
        { }

        SQLite::Database database;
        RecordReader reader;
        RecordWriter writer;
    };

    SQLite::Database &database() { return connection->database; }
    qint64 scalar(const char *sql) { return database().execAndGet(sql).getInt64(); }
    qint64 newestHistory() { return scalar("SELECT coalesce(max(id), 0) FROM history"); }
    /// Changes with every commit of another connection, never with our own. Inside a transaction: as of its begin.
    qint64 dataVersion() { return scalar("PRAGMA data_version"); }

    /// Runs @p work, which returns a Result, on the file that has the address book's name.
    template <typename Work> auto guarded(Work work) -> decltype(work());
    /// Runs @p work, which writes, until what it wrote is in the file.
    template <typename Work> Result<void> written(Work work);
    /// What is said of a person who cannot be read, with the file's name.
    Error damage(const Error &error) const { return AddressBookFile::failure(name, error.text, error.kind); }
    bool hasItsFile() const { return book != FileOnDisk() && book == FileOnDisk::named(path); }
    bool hasItsFiles() const { return hasItsFile() && log == FileOnDisk::named(LogFile::nameFor(path)); }
    void leaveMovedFile();
    Result<void> reopenIfLogIsGone();
    Result<void> commitOnce(const std::vector<RecordChange> &changes);

    std::unique_ptr<PrivateCopy> copy; ///< null: it may be written
    Error readOnlyReason;
    QString path;
    QString name; ///< for messages: of a copy, the original's path
    Clock clock;
    int commits = 0;
    std::vector<QString> damagedPeople;
    std::unique_ptr<Connection> connection; ///< null: could not be opened again
    FileOnDisk book; ///< what the connection has open
    FileOnDisk log;
    qint64 seenHistory = 0; ///< id of the last row of history that this store knows of
    qint64 seenDataVersion = -1;
    QFileSystemWatcher *watcher = nullptr; ///< belongs to the thread of its event loop
};

template <typename Work> auto SqliteStore::Private::guarded(Work work) -> decltype(work())
{
    try {
        if (auto ready = reopenIfLogIsGone(); !ready)
            return ready.error();
        return work();
    } catch (const SQLite::Exception &exception) {
        return AddressBookFile::errorOf(exception, name);
    }
}

template <typename Work> Result<void> SqliteStore::Private::written(Work work)
{
    if (copy)
        return readOnlyReason;
    constexpr int kAttempts = 2; // somebody may take the log away just while it is written
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        Result<void> done = guarded(work);
        if (!done || hasItsFiles())
            return done;
    }
    return Error{ErrorKind::Unavailable, name % QStringLiteral(": another program keeps taking its log away")};
}

/// A file of another name keeps all that was saved, and its log does not wait for the next file of this name.
void SqliteStore::Private::leaveMovedFile()
{
    if (!connection || hasItsFile())
        return;
    int written = 0;
    int inLog = -1;
    sqlite3_wal_checkpoint_v2(database().getHandle(), nullptr, SQLITE_CHECKPOINT_PASSIVE, &inLog, &written);
    if (inLog == written) // else another program has yet to do so
        LogFile::removeOrphan(path, log);
}

/// Whatever closes a descriptor of the file in this process takes back SQLite's locks on it, and another program then
/// clears the log away. What is written to such a log is lost.
Result<void> SqliteStore::Private::reopenIfLogIsGone()
{
    if (connection && hasItsFiles())
        return {};
    leaveMovedFile();
    if (!hasItsFile())
        return AddressBookFile::failure(name,
            QStringLiteral("the address book was moved, replaced or removed while it was open; nothing can be read "
                           "from it or saved in it any more"),
            ErrorKind::Unavailable);
    qCWarning(lcStore).noquote() << name % QStringLiteral(": its log was removed by another program; opened again");
    // The lost log is not to be written into the file, which another program has gone on with.
    if (connection)
        sqlite3_db_config(database().getHandle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    connection.reset(); // first: connections of one process share what they know of a log
    connection = std::make_unique<Connection>(AddressBookFile::connect(path));
    log = FileOnDisk::named(LogFile::nameFor(path));
    seenDataVersion = -1;
    if (watcher)
        QMetaObject::invokeMethod(
            watcher, [watched = watcher, logName = LogFile::nameFor(path)] { watched->addPath(logName); });
    return {};
}

SqliteStore::SqliteStore(std::unique_ptr<Private> dd) : d(std::move(dd)) { }

SqliteStore::~SqliteStore()
{
    SqliteStore::setChangeListener({});
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
        (*store)->d->readOnlyReason = std::move(reason);
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
        auto opened = std::make_unique<Private>(file, name, book, std::move(clock), std::move(database));
        opened->copy = std::move(copy);
        return std::unique_ptr<SqliteStore>(new SqliteStore(std::move(opened)));
    } catch (const SQLite::Exception &exception) {
        return AddressBookFile::errorOf(exception, name);
    }
}

bool SqliteStore::canWrite() const
{
    return !d->copy;
}

Error SqliteStore::readOnlyReason() const
{
    return d->readOnlyReason;
}

QString SqliteStore::name() const
{
    return d->name;
}

QString SqliteStore::file() const
{
    return d->hasItsFile() ? d->path : QString();
}

bool SqliteStore::copyTo(const QString &path)
{
    try {
        SQLite::Database copy(QFile::encodeName(path).constData(), SQLite::OPEN_READWRITE);
        return d->connection && SQLite::Backup(copy, d->database()).executeStep(-1) == SQLITE_DONE;
    } catch (const SQLite::Exception &) {
        return false;
    }
}

Result<std::vector<StoredRecord>> SqliteStore::loadAll()
{
    return d->guarded([this]() -> Result<std::vector<StoredRecord>> {
        // One read transaction, so that all tables are seen as they were at one moment.
        SQLite::Transaction transaction(d->database());
        std::vector<StoredRecord> people;
        people.reserve(std::size_t(d->scalar("SELECT count(*) FROM contact")));
        d->damagedPeople.clear();
        const auto read = d->connection->reader.everybody([this, &people](StoredRecord person, Proof proof) {
            if (proof == Proof::Differs)
                d->damagedPeople.push_back(person.uid);
            people.push_back(std::move(person));
        });
        if (!read)
            return d->damage(read.error());
        d->seenHistory = d->newestHistory();
        d->seenDataVersion = d->dataVersion();
        transaction.commit();
        return people;
    });
}

std::vector<QString> SqliteStore::damagedPeople() const
{
    return d->damagedPeople;
}

Result<void> SqliteStore::commit(const std::vector<RecordChange> &changes)
{
    return d->written([&] { return d->commitOnce(changes); });
}

Result<void> SqliteStore::Private::commitOnce(const std::vector<RecordChange> &changes)
{
    const bool isLarge = changes.size() >= kLargeCommit;
    if (isLarge)
        database().exec("PRAGMA cache_size = -65536");
    const auto givenBack = qScopeGuard([&] {
        if (isLarge)
            database().tryExec("PRAGMA cache_size = -2000; PRAGMA shrink_memory");
    });
    SQLite::Transaction transaction(database(), SQLite::TransactionBehavior::IMMEDIATE);
    const QDateTime now = clock();
    const bool othersWereFirst = newestHistory() != seenHistory;
    connection->writer.beginSave(HistoryTable::timeText(now));
    for (const auto &change : changes) {
        if (auto applied = connection->writer.apply(change); !applied)
            return applied;
    }
    if (commits++ % kCommitsPerPruning == 0)
        HistoryTable::prune(database(), now);
    const qint64 newest = newestHistory();
    transaction.commit();
    if (!othersWereFirst)
        seenHistory = newest;
    return {};
}

Result<std::vector<OutsideChange>> SqliteStore::takeChangesFromOutside()
{
    return d->guarded([this]() -> Result<std::vector<OutsideChange>> {
        SQLite::Transaction transaction(d->database());
        const qint64 dataVersion = d->dataVersion();
        std::vector<OutsideChange> changes;
        if (dataVersion == d->seenDataVersion)
            return changes;
        SQLite::Statement touched(d->database(), "SELECT uid FROM history WHERE id > ? GROUP BY uid ORDER BY min(id)");
        touched.bind(1, int64_t(d->seenHistory));
        while (touched.executeStep()) {
            const QString uid = textOfUtf8(touched.getColumn(0).getString());
            const auto now = d->connection->reader.personWithUid(uid);
            if (!now)
                return d->damage(now.error());
            changes.push_back({uid, *now});
        }
        const qint64 newest = d->newestHistory();
        transaction.commit();
        d->seenHistory = newest;
        d->seenDataVersion = dataVersion;
        return changes;
    });
}

void SqliteStore::setChangeListener(std::function<void()> listener)
{
    if (d->watcher)
        std::exchange(d->watcher, nullptr)->deleteLater();
    if (!listener)
        return;
    // Every commit is written to the log first, and the log stays as long as anybody has the address book open.
    d->watcher = new QFileSystemWatcher({LogFile::nameFor(d->path)});
    QObject::connect(
        d->watcher, &QFileSystemWatcher::fileChanged, d->watcher, [listener = std::move(listener)] { listener(); });
}

Result<std::vector<ChangeSummary>> SqliteStore::history()
{
    return d->guarded([this] { return Result(HistoryTable::summaries(d->database())); });
}

Result<ChangeStep> SqliteStore::historyStep(const QString &causeId)
{
    return d->guarded([&] {
        SQLite::Transaction transaction(d->database()); // what a change left is looked up in several tables
        return HistoryTable::step(d->database(), d->connection->reader, causeId);
    });
}

Result<std::vector<Ignored>> SqliteStore::ignored()
{
    return d->guarded([this] { return Result(IgnoredTable::read(d->database())); });
}

Result<void> SqliteStore::changeIgnored(const std::vector<Ignored> &added, const QStringList &removedIds)
{
    return d->written([&]() -> Result<void> {
        IgnoredTable::change(d->database(), added, removedIds);
        return {};
    });
}
