// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/BookOpener.h"

#include "base/Job.h"
#include "contacts/stores/open/OpenStore.h"

#include <QCursor>
#include <QGuiApplication>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace {

void saveWithBusyCursor(const std::function<void()> &write)
{
    bool isBusy = false;
    Job::runAndWait(write, [&isBusy] {
        isBusy = true;
        QGuiApplication::setOverrideCursor(Qt::BusyCursor);
    });
    if (isBusy)
        QGuiApplication::restoreOverrideCursor();
}

} // namespace

struct BookOpener::Opened
{
    Result<std::shared_ptr<ABAddressBook>> book;
    QString damage = {}; ///< of some people in it
    std::optional<Rescue::Offer> offer = {};
    Result<BackupRest> backup = BackupRest();
};

BookOpener::BookOpener(QObject *parent) : QObject(parent)
{
    connect(&m_hourly, &QTimer::timeout, this, [this] {
        if (const auto book = ABAddressBook::sharedAddressBook())
            backUp([book] { return makeDailyBackup(*book, QDate::currentDate()); });
    });
    m_hourly.setTimerType(Qt::VeryCoarseTimer);
    m_hourly.start(1h);
}

void BookOpener::open(const QString &where)
{
    m_where = where;
    m_opening.restart([this, where](const std::stop_token &isGivenUp) { return load(where, isGivenUp); },
        [this](const Opened &result) { install(result); });
}

BookOpener::Opened BookOpener::load(const QString &where, const std::stop_token &isGivenUp)
{
    auto store = openStore(where);
    if (!store)
        return {store.error(), {}, Rescue::offerFor(where, store.error())};
    (*store)->setLoadProgress([this, isGivenUp](qint64 done, qint64 total) {
        Job::deliver(this, [this, done, total] { Q_EMIT progressed(done, total); });
        return !isGivenUp.stop_requested();
    });
    const AddressBookStore &opened = **store;
    const auto book = ABAddressBook::open(std::move(*store));
    if (!book)
        return {book, {}, Rescue::offerFor(where, book.error())};
    (*book)->setSaveRunner(&saveWithBusyCursor);
    // Before anybody can change anything, though it is copied later.
    return {book, damageFoundIn(opened), {}, beginDailyBackup(**book, QDate::currentDate())};
}

void BookOpener::install(const Opened &result)
{
    Q_EMIT opened(result.book, result.offer);
    if (!result.damage.isEmpty()) // not of a kind for which another file would be offered: everybody else is well
        Q_EMIT backupFailed({ErrorKind::Io, result.damage}, {});
    if (result.backup)
        m_backup = *result.backup;
    else
        m_backup = [error = result.backup.error()]() -> Result<void> { return error; };
}

void BookOpener::finishBackup()
{
    if (const BackupRest rest = std::exchange(m_backup, {}))
        backUp(rest);
}

void BookOpener::backUp(const BackupRest &make)
{
    struct Failure
    {
        Error error;
        std::optional<Rescue::Offer> offer;
    };
    m_backups.start(
        [make, where = m_where]() -> std::optional<Failure> {
            const auto made = make();
            if (made)
                return {};
            // What makes the copy reads all of the book, and may be the first to find that it is damaged.
            return Failure{made.error(), Rescue::offerFor(where, made.error())};
        },
        [this](const std::optional<Failure> &failure) {
            if (failure)
                Q_EMIT backupFailed(failure->error, failure->offer);
        });
}
