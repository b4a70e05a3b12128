// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/history/BackupActions.h"

#include "app/history/ChangedPeopleModel.h"
#include "app/look/Alerts.h"
#include "app/look/Counted.h"
#include "app/look/FileDialog.h"
#include "base/Job.h"
#include "contacts/book/ABAddressBook.h"
#include "contacts/stores/open/Backups.h"

#include <QDir>
#include <QFileInfo>
#include <QPushButton>

#include <utility>

namespace {

QString contacts(qint64 count)
{
    return counted(count, BackupActions::tr("contact"), BackupActions::tr("contacts"));
}

QString fileFilter()
{
    return BackupActions::tr("Address books (*.sqlite);;All files (*)");
}

Result<QString> backedUp(const QString &path, bool replaces)
{
    const auto book = ABAddressBook::sharedAddressBook();
    const auto people = book ? backUp(*book, path, replaces) : Result<qint64>(noAddressBook());
    if (!people)
        return people.error();
    return BackupActions::tr("Backed up %1 to %2").arg(contacts(*people), path);
}

Result<QString> applied(const RestorePlan &plan)
{
    const auto book = ABAddressBook::sharedAddressBook();
    const auto done = book ? restore(*book, plan) : Result<void>(noAddressBook());
    if (!done)
        return done.error();
    return BackupActions::tr("Restored %1: %2")
        .arg(plan.description, countsText(plan.added, plan.changed, plan.removed));
}

Result<QString> backupOpened(const Rescue::Offer &offer, const QString &newFile)
{
    const auto people = Rescue::openBackup(offer, newFile);
    if (!people)
        return people.error();
    return BackupActions::tr("The backup, with %1, is now in %2").arg(contacts(*people), newFile);
}

Result<QString> salvaged(const Rescue::Offer &offer, const QString &newFile)
{
    const auto report = Rescue::salvage(offer.damagedFile, newFile);
    if (!report)
        return report.error();
    const QString lost = QLocale().toString(report->lost);
    return BackupActions::tr(
        "What could be read is now in %1: %2, %3 of them incomplete or not as they were saved; %4 could not be read")
        .arg(newFile, contacts(qint64(report->people.size())), QLocale().toString(report->incomplete),
            report->isLostExact ? lost : BackupActions::tr("at least %1").arg(lost));
}

/// What can be done about a failure; gone once it is closed.
class OfferBox : public TitledBox
{
public:
    OfferBox(const QString &title, const QString &message, QWidget *parent) : TitledBox(Warning, title, message, parent)
    {
        setAttribute(Qt::WA_DeleteOnClose);
        setEscapeButton(addButton(BackupActions::tr("Close"), RejectRole));
    }

    /// The first one is the default.
    void addChoice(const QString &text, const std::function<void()> &chosen)
    {
        QPushButton *button = addButton(text, AcceptRole);
        connect(button, &QPushButton::clicked, this, chosen);
        if (!defaultButton())
            setDefaultButton(button);
    }
};

} // namespace

BackupActions::BackupActions(QWidget &window, AlertPanel &alerts, ActivityLog &log)
    : m_window(window), m_alerts(alerts), m_log(log)
{ }

BackupActions::~BackupActions() = default;

void BackupActions::run(const Work &work, const QString &folder, const std::function<void()> &then)
{
    m_job.start(work, [this, folder, then](const Result<QString> &done) {
        if (done) {
            m_log.append(ActivityLog::Kind::Done, *done, folder);
            then();
        } else {
            fail(tr("Nothing was changed."), done.error());
        }
        Q_EMIT finished(static_cast<bool>(done));
    });
}

void BackupActions::fail(const QString &title, const Error &error)
{
    m_log.append(ActivityLog::Kind::Failure, error.description());
    m_alerts.runAlertPanel(title, error.description(), tr("OK"), {});
}

void BackupActions::backUp()
{
    const QString name = tr("contacts %1.sqlite").arg(QDate::currentDate().toString(Qt::ISODate));
    const QStringList paths =
        askForFiles(&m_window, FilesAsked::ToSave, tr("Back Up"), QDir::home().filePath(name), fileFilter());
    if (!paths.isEmpty())
        backUpTo(paths.front()); // the dialog asked whether a file of that name may go
}

void BackupActions::backUpTo(const QString &path)
{
    run([path] { return backedUp(path, true); }, QFileInfo(path).path(), [] {});
}

void BackupActions::restore()
{
    const QStringList paths = askForFiles(&m_window, FilesAsked::ToOpen, tr("Restore"), QDir::homePath(), fileFilter());
    if (!paths.isEmpty())
        restoreFrom(paths.front());
}

void BackupActions::restoreFrom(const QString &path)
{
    m_job.start(
        [path, book = ABAddressBook::sharedAddressBook()] {
            return book ? planRestoreOfBackup(*book, path) : Result<RestorePlan>(noAddressBook());
        },
        [this](const Result<RestorePlan> &plan) { confirm(plan, tr("Restore the address book from %1?")); });
}

void BackupActions::restorePerson(const QString &uid)
{
    m_job.start(
        [uid, book = ABAddressBook::sharedAddressBook()] {
            return book ? planRestoreOfPeople(*book, {uid}) : Result<RestorePlan>(noAddressBook());
        },
        [this](const Result<RestorePlan> &plan) { confirm(plan, tr("Restore this contact from %1?")); });
}

void BackupActions::confirm(const Result<RestorePlan> &plan, const QString &question)
{
    if (!plan) {
        fail(tr("Nothing was changed."), plan.error());
        Q_EMIT finished(false);
        return;
    }
    if (plan->changes.empty()) {
        m_alerts.runAlertPanel(tr("There is nothing to restore."),
            tr("The address book holds exactly what %1 holds.").arg(plan->description), tr("OK"), {});
        Q_EMIT finished(true);
        return;
    }
    const auto answer = m_alerts.runAlertPanel(question.arg(plan->description),
        tr("Contacts: %1. Change History can undo this.").arg(countsText(plan->added, plan->changed, plan->removed)),
        tr("Restore"), tr("Cancel"));
    if (answer != AlertPanel::Answer::Default)
        return;
    run([plan = *plan] { return applied(plan); }, {}, [this] { Q_EMIT restored(); });
}

void BackupActions::offerRescue(const Rescue::Offer &offer, const QString &reason)
{
    auto *box = new OfferBox(tr("The address book is damaged."),
        tr("%1\n\nThe damaged file stays as it is. You can continue with a new file beside it.").arg(reason),
        &m_window);
    const QString newFile = Rescue::newFileBeside(offer.damagedFile, QDate::currentDate());
    if (!offer.recovered.isEmpty())
        box->addChoice(tr("Open %1").arg(QFileInfo(offer.recovered).fileName()),
            [this, offer] { Q_EMIT rescued(offer.recovered); });
    if (!offer.newestBackup.isEmpty())
        box->addChoice(tr("Open Backup of %1").arg(QLocale().toString(offer.backupTime.date(), QLocale::ShortFormat)),
            [=, this] { rescueInto(newFile, [=] { return backupOpened(offer, newFile); }); });
    box->addChoice(
        tr("Open What Can Be Read"), [=, this] { rescueInto(newFile, [=] { return salvaged(offer, newFile); }); });
    box->open();
}

void BackupActions::offerNewPlace(const QString &file)
{
    if (std::exchange(m_isOfferingNewPlace, true))
        return;
    auto *box = new OfferBox(tr("The address book is gone."),
        tr("%1 was moved, replaced or removed while it was open. All contacts as you see them can be "
           "saved in a new file, with the history unless it is damaged.")
            .arg(file),
        &m_window);
    if (!QFileInfo::exists(file))
        box->addChoice(
            tr("Save Under the Old Name"), [=, this] { rescueInto(file, [=] { return backedUp(file, false); }); });
    box->addChoice(tr("Save As…"), [this, file] {
        const QStringList paths = askForFiles(&m_window, FilesAsked::ToSave, tr("Save As"), file, fileFilter());
        if (!paths.isEmpty()) // the dialog asked whether a file of that name may go
            rescueInto(paths.front(), [path = paths.front()] { return backedUp(path, true); });
    });
    connect(box, &QObject::destroyed, this, [this] { m_isOfferingNewPlace = false; });
    box->open();
}

void BackupActions::rescueInto(const QString &newFile, const Work &work)
{
    run(work, QFileInfo(newFile).path(), [this, newFile] { Q_EMIT rescued(newFile); });
}
