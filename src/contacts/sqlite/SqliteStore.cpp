// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/sqlite/SqliteStore.h"

#include "contacts/record/Utf8Text.h"
#include "contacts/sqlite/AddressBookFile.h"
#include "contacts/sqlite/HistoryTable.h"
#include "contacts/sqlite/RecordWriter.h"

#include <SQLiteCpp/Transaction.h>

#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QStandardPaths>

namespace {

/// From how many changes on a commit is worth a cache that holds the whole index of uids.
constexpr std::size_t kLargeCommit = 1000;

/// After how many commits the history is looked through for what has become too old; the first one of a run does too.
constexpr int kCommitsPerPruning = 256;

/// A connection to a file of the present layout.
SQLite::Database connectUpToDate(const QString &path)
{
    SQLite::Database database = AddressBookFile::connect(path);
    HistoryTable::addMissingColumns(database);
    return database;
}

/// Room for an index that a large import writes all over, given back afterwards.
class LargeCache
{
public:
    LargeCache(SQLite::Database &database, bool wanted) : m_database(wanted ? &database : nullptr)
    {
        if (m_database)
            m_database->exec("PRAGMA cache_size = -65536");
    }
    ~LargeCache()
    {
        // tryExec: not worth an exception on the way out.
        if (m_database)
            m_database->tryExec("PRAGMA cache_size = -2000; PRAGMA shrink_memory");
    }
    LargeCache(const LargeCache &) = delete;
    LargeCache &operator=(const LargeCache &) = delete;

private:
    SQLite::Database *m_database;
};

} // namespace

class SqliteStore::Private
{
public:
    Private(const QString &filePath, Clock theClock)
        : path(filePath)
        , clock(std::move(theClock))
        , database(connectUpToDate(filePath))
        , reader(database.getHandle(), RecordReader::Scope::Everybody)
        , personReader(database.getHandle(), RecordReader::Scope::OnePerson)
        , writer(database)
    { }

    qint64 scalar(const char *sql) { return database.execAndGet(sql).getInt64(); }
    qint64 newestHistory() { return scalar("SELECT coalesce(max(id), 0) FROM history"); }
    /// Changes with every commit of another connection, never with our own.
    qint64 dataVersion() { return scalar("PRAGMA data_version"); }

    QString path;
    Clock clock;
    int commits = 0;
    SQLite::Database database;
    RecordReader reader;
    RecordReader personReader;
    RecordWriter writer;
    qint64 seenHistory = 0; ///< id of the last row of history that this store knows of
    qint64 seenDataVersion = -1;
    QFileSystemWatcher *watcher = nullptr; ///< belongs to the thread of its event loop
};

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
    try {
        auto opened = std::make_unique<Private>(file, std::move(clock));
        // The version in the file's header may be older than the one in its write-ahead log.
        const auto version = int(opened->scalar("PRAGMA user_version"));
        if (auto known = AddressBookFile::checkVersion(version, file); !known)
            return known.error();
        return std::unique_ptr<SqliteStore>(new SqliteStore(std::move(opened)));
    } catch (const SQLite::Exception &exception) {
        return AddressBookFile::errorOf(exception, file);
    }
}

QString SqliteStore::name() const
{
    return d->path;
}

Result<std::vector<StoredRecord>> SqliteStore::loadAll()
{
    try {
        // One read transaction, so that all tables are seen as they were at one moment.
        SQLite::Transaction transaction(d->database);
        std::vector<StoredRecord> people;
        people.reserve(std::size_t(d->scalar("SELECT count(*) FROM person")));
        while (true) {
            StoredRecord person = d->reader.next();
            if (!person.record)
                break;
            people.push_back(std::move(person));
        }
        d->seenHistory = d->newestHistory();
        transaction.commit();
        d->seenDataVersion = d->dataVersion();
        return people;
    } catch (const SQLite::Exception &exception) {
        return AddressBookFile::errorOf(exception, d->path);
    }
}

Result<void> SqliteStore::commit(const std::vector<RecordChange> &changes)
{
    try {
        const LargeCache cache(d->database, changes.size() >= kLargeCommit);
        SQLite::Transaction transaction(d->database, SQLite::TransactionBehavior::IMMEDIATE);
        const QDateTime now = d->clock();
        const bool othersWereFirst = d->newestHistory() != d->seenHistory;
        d->writer.beginSave(HistoryTable::timeText(now));
        for (const auto &change : changes) {
            if (!d->writer.apply(change))
                return Error{
                    ErrorKind::Conflict, change.uid % QStringLiteral(": changed by another program meanwhile")};
        }
        if (d->commits++ % kCommitsPerPruning == 0)
            HistoryTable::prune(d->database, now);
        const qint64 newest = d->newestHistory();
        transaction.commit();
        if (!othersWereFirst)
            d->seenHistory = newest;
        return {};
    } catch (const SQLite::Exception &exception) {
        return AddressBookFile::errorOf(exception, d->path);
    }
}

Result<std::vector<OutsideChange>> SqliteStore::takeChangesFromOutside()
{
    try {
        const qint64 dataVersion = d->dataVersion();
        if (dataVersion == d->seenDataVersion)
            return std::vector<OutsideChange>();
        SQLite::Transaction transaction(d->database);
        std::vector<OutsideChange> changes;
        SQLite::Statement touched(d->database,
            "SELECT history.uid, person.id FROM (SELECT uid, min(id) AS first FROM history WHERE id > ? GROUP BY uid) "
            "AS history "
            "LEFT JOIN person USING (uid) ORDER BY first");
        touched.bind(1, int64_t(d->seenHistory));
        while (touched.executeStep()) {
            const QString uid = textOfUtf8(touched.getColumn(0).getString());
            const bool isThere = !touched.getColumn(1).isNull();
            changes.push_back(
                {uid, isThere ? d->personReader.readPerson(touched.getColumn(1).getInt64()).record : nullptr});
        }
        const qint64 newest = d->newestHistory();
        transaction.commit();
        d->seenHistory = newest;
        d->seenDataVersion = dataVersion;
        return changes;
    } catch (const SQLite::Exception &exception) {
        return AddressBookFile::errorOf(exception, d->path);
    }
}

void SqliteStore::setChangeListener(std::function<void()> listener)
{
    if (d->watcher)
        std::exchange(d->watcher, nullptr)->deleteLater();
    if (!listener)
        return;
    // Every commit is written to the log first, and the log stays as long as anybody has the address book open.
    d->watcher = new QFileSystemWatcher({d->path + QStringLiteral("-wal")});
    QObject::connect(
        d->watcher, &QFileSystemWatcher::fileChanged, d->watcher, [listener = std::move(listener)] { listener(); });
}

Result<std::vector<ChangeSummary>> SqliteStore::history()
{
    try {
        return HistoryTable::summaries(d->database);
    } catch (const SQLite::Exception &exception) {
        return AddressBookFile::errorOf(exception, d->path);
    }
}

Result<ChangeStep> SqliteStore::historyStep(const QString &causeId)
{
    try {
        SQLite::Transaction transaction(d->database); // what a change left is looked up in several tables
        return HistoryTable::step(d->database, d->personReader, causeId);
    } catch (const SQLite::Exception &exception) {
        return AddressBookFile::errorOf(exception, d->path);
    }
}
