// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/BookOpener.h"

#include "base/PatientCall.h"
#include "contacts/stores/open/Backups.h"
#include "contacts/stores/open/OpenStore.h"

#include <QCursor>
#include <QGuiApplication>

#include <chrono>

using namespace std::chrono_literals;

namespace {

void saveWithBusyCursor(const std::function<void()> &write)
{
    bool isBusy = false;
    PatientCall::run(write, [&isBusy] {
        isBusy = true;
        QGuiApplication::setOverrideCursor(Qt::BusyCursor);
    });
    if (isBusy)
        QGuiApplication::restoreOverrideCursor();
}

} // namespace

BookOpener::BookOpener(QObject *parent) : QObject(parent)
{
    connect(&m_hourly, &QTimer::timeout, this, [this] {
        if (const auto book = ABAddressBook::sharedAddressBook())
            m_backupMaker.start([this, book, where = m_where](const std::stop_token &) {
                tellBackup(makeDailyBackup(*book, QDate::currentDate()), where);
            });
    });
    m_hourly.setTimerType(Qt::VeryCoarseTimer);
    m_hourly.start(1h);
}

BookOpener::~BookOpener()
{
    giveUp();
}

void BookOpener::open(const QString &where)
{
    m_where = where;
    m_isGivenUp = false;
    m_job.start([this, where](const std::stop_token &isSuperseded) { run(where, isSuperseded); });
}

void BookOpener::run(const QString &where, const std::stop_token &isSuperseded)
{
    QString damage;
    auto book = [&]() -> Result<std::shared_ptr<ABAddressBook>> {
        auto store = openStore(where);
        if (!store)
            return store.error();
        (*store)->setLoadProgress([this, isSuperseded](qint64 done, qint64 total) {
            QMetaObject::invokeMethod(
                this, [this, done, total] { Q_EMIT progressed(done, total); }, Qt::QueuedConnection);
            return !m_isGivenUp && !isSuperseded.stop_requested();
        });
        const AddressBookStore &opened = **store;
        auto loaded = ABAddressBook::open(std::move(*store));
        if (loaded)
            damage = damageFoundIn(opened);
        return loaded;
    }();
    if (isSuperseded.stop_requested())
        return;
    if (book)
        (*book)->setSaveRunner(&saveWithBusyCursor);
    const auto offer = book ? std::nullopt : Rescue::offerFor(where, book.error());
    // Before anybody can change anything; checking the copy takes longer, and nobody waits for that.
    const auto backup = book ? beginDailyBackup(**book, QDate::currentDate()) : BackupRest();
    PatientCall::deliver(this, [this, book, offer] { Q_EMIT opened(book, offer); });
    if (!damage.isEmpty()) // not of a kind for which another file would be offered: everybody else is well
        tellBackup(Error{ErrorKind::Io, damage}, where);
    tellBackup(backup && *backup ? (*backup)() : backup ? Result<void>() : backup.error(), where);
}

void BookOpener::tellBackup(const Result<void> &made, const QString &where)
{
    if (made)
        return;
    // What makes the copy reads all of the book, and may be the first to find that it is damaged.
    QMetaObject::invokeMethod(
        this,
        [this, error = made.error(), offer = Rescue::offerFor(where, made.error())] {
            Q_EMIT backupFailed(error, offer);
        },
        Qt::QueuedConnection);
}
