// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/open/Backups.h"

#include "base/Folders.h"
#include "contacts/stores/sqlite/SqliteStore.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <algorithm>

namespace {

const QString kEnding = QStringLiteral(".sqlite");

/// Their names are dates, so they sort by age. Those of days to come are of a clock that was wrong, and stand last.
QStringList newestFirst(const QString &folder, const QDate &today)
{
    QStringList names =
        QDir(folder).entryList({QStringLiteral("*-*-*") % kEnding}, QDir::Files, QDir::Name | QDir::Reversed);
    const QString newest = today.toString(Qt::ISODate) % kEnding;
    std::stable_partition(names.begin(), names.end(), [&](const QString &name) { return name <= newest; });
    return names;
}

void keepNewest(const QString &folder, const QDate &today)
{
    const QStringList names = newestFirst(folder, today);
    for (qsizetype i = kDailyBackups; i < names.size(); ++i)
        QFile::remove(folder % u'/' % names[i]);
}

/// What a backup that was killed left behind; today's may be being made by another program.
void removeRemains(const QString &folder, const QDate &today)
{
    const QFileInfoList files =
        QDir(folder).entryInfoList({QStringLiteral("*-*-*") % kEnding % QStringLiteral(".*")}, QDir::Files);
    for (const QFileInfo &file : files) {
        if (!file.fileName().startsWith(today.toString(Qt::ISODate)))
            QFile::remove(file.filePath());
    }
}

QString folderOfDailyBackups(const QString &bookFile)
{
    constexpr qsizetype kDigits = 12;
    const QFileInfo file(bookFile);
    const QString path = file.exists() ? file.canonicalFilePath() : file.absoluteFilePath();
    const QByteArray digest = QCryptographicHash::hash(QFile::encodeName(path), QCryptographicHash::Sha1).toHex();
    return QFileInfo(SqliteStore::defaultPath()).path() % QStringLiteral("/backups/")
        % QFileInfo(path).completeBaseName() % u'-' % QString::fromLatin1(digest.first(kDigits));
}

} // namespace

Result<qint64> backUp(ABAddressBook &book, const QString &path, bool replaces)
{
    const auto existing = replaces ? BackupFile::Existing::Replace : BackupFile::Existing::Refuse;
    if (!book.file().isEmpty()) {
        auto copy = BackupFile::copyOf(book.file(), path, existing);
        return copy ? (*copy)->finish() : copy.error();
    }
    BookContents contents;
    if (auto ignored = book.ignored()) // else its file is gone, and the people matter more
        contents.ignored = std::move(*ignored);
    const PeopleSnapshot everybody = book.snapshot();
    contents.people.reserve(everybody->size());
    for (const auto &[person, record] : *everybody)
        contents.people.push_back({person->uniqueId(), record});
    auto withHistory = BackupFile::write(contents, path, existing, [&book](const QString &file) { book.copyTo(file); });
    // A damaged file that is gone, too, has no history worth losing people for.
    return withHistory ? withHistory : BackupFile::write(contents, path, existing);
}

Result<RestorePlan> planRestoreOfBackup(ABAddressBook &book, const QString &path)
{
    const auto contents = contentsOfFile(path);
    if (!contents)
        return contents.error();
    auto plan = planReplacement(book, contents->people);
    if (plan) {
        plan->description = QFileInfo(path).fileName();
        plan->ignored = contents->ignored;
    }
    return plan;
}

Result<RestorePlan> planRestoreOfPeople(ABAddressBook &book, const QString &path, const QStringList &uids)
{
    const auto contents = contentsOfFile(path);
    if (!contents)
        return contents.error();
    if (auto current = book.catchUp(); !current)
        return current.error();
    QHash<QString, PersonRecordPtr> held;
    for (const auto &[uid, record] : contents->people)
        held.insert(uid, record);
    RestorePlan plan;
    plan.description = QFileInfo(path).fileName();
    for (const QString &uid : QSet<QString>(uids.begin(), uids.end())) {
        if (!held.contains(uid))
            return Error{ErrorKind::NotFound, uid % QStringLiteral(": is not in ") % path};
        const ABPersonPtr now = book.personWithUniqueId(uid);
        plan.changes.push_back({uid, now ? now->record() : nullptr, held.value(uid)});
        ++(now ? plan.changed : plan.added);
    }
    return plan;
}

Result<RestorePlan> planRestoreOfPeople(ABAddressBook &book, const QStringList &uids)
{
    const QString folder = folderOfDailyBackups(book.file());
    for (const QString &name : newestFirst(folder, QDate::currentDate())) {
        if (auto plan = planRestoreOfPeople(book, folder % u'/' % name, uids))
            return plan;
    }
    return Error{ErrorKind::NotFound, uids.join(u' ') % QStringLiteral(": no daily backup has it undamaged")};
}

Result<FaultsInFile> verify(const QString &bookFile)
{
    auto faults = faultsInFile(bookFile);
    if (!faults)
        return faults;
    auto missing = std::size(faults->people);
    const QString folder = folderOfDailyBackups(bookFile);
    for (const QString &name : newestFirst(folder, QDate::currentDate())) {
        const QString backup = folder % u'/' % name;
        const auto contents = missing > 0 ? contentsOfFile(backup) : Error();
        if (!contents)
            continue; // damaged too, or all have been found
        QSet<QString> held;
        for (const StoredRecord &person : contents->people)
            held.insert(person.uid);
        for (auto &person : faults->people) {
            if (!person.backup.isEmpty() || !held.contains(person.uid))
                continue;
            person.backup = backup;
            --missing;
        }
    }
    return faults;
}

QString damageFoundIn(const AddressBookStore &store)
{
    const std::vector<QString> damaged = store.damagedPeople();
    if (damaged.empty())
        return {};
    return store.name() % QStringLiteral(": ") % damaged.front()
        % (damaged.size() > 1 ? QStringLiteral(" and %1 more are").arg(damaged.size() - 1) : QStringLiteral(" is"))
        % QStringLiteral(" damaged: not as saved, and cannot be changed; \"peoplenook-cli verify\" names the newest "
                         "backup that has each of them whole");
}

QString newestDailyBackup(const QString &bookFile)
{
    const QString folder = folderOfDailyBackups(bookFile);
    const QStringList names = newestFirst(folder, QDate::currentDate());
    return names.isEmpty() ? QString() : QString(folder % u'/' % names.front());
}

Result<BackupRest> beginDailyBackup(const ABAddressBook &book, const QDate &today)
{
    const QString bookFile = book.file();
    if (bookFile.isEmpty() || !book.canWrite() || book.snapshot()->empty())
        return BackupRest();
    const QString folder = folderOfDailyBackups(bookFile);
    const QString path = folder % u'/' % today.toString(Qt::ISODate) % kEnding;
    if (QFileInfo::exists(path))
        return BackupRest();
    const auto failed = [bookFile](const Error &error) {
        return Error{error.kind, bookFile % QStringLiteral(": today's backup could not be made: ") % error.text};
    };
    if (!makePrivateFolder(folder))
        return failed({ErrorKind::Io, folder % QStringLiteral(": the folder cannot be created")});
    removeRemains(folder, today);
    auto copy = BackupFile::copyOf(bookFile, path, BackupFile::Existing::Refuse);
    if (!copy)
        return failed(copy.error());
    return BackupRest(
        [folder, path, today, failed, backup = std::shared_ptr<BackupFile>(std::move(*copy))]() -> Result<void> {
            const auto finished = backup->finish();
            // Another program that made today's at the same time did as well.
            if (!finished && !QFileInfo::exists(path))
                return failed(finished.error());
            keepNewest(folder, today);
            return {};
        });
}

Result<void> makeDailyBackup(const ABAddressBook &book, const QDate &today)
{
    const auto rest = beginDailyBackup(book, today);
    if (!rest)
        return rest.error();
    return *rest ? (*rest)() : Result<void>();
}
