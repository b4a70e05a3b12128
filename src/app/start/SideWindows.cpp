// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/SideWindows.h"

#include "app/activity/ActivityWindow.h"
#include "app/activity/AppLog.h"
#include "app/activity/OpenOutside.h"
#include "app/card/ContactCard.h"
#include "app/compare/CompareWindow.h"
#include "app/exchange/ImportWindow.h"
#include "app/history/HistoryWindow.h"
#include "app/likely/LikelyWindow.h"
#include "app/look/Counted.h"
#include "app/results/IgnoredWindow.h"
#include "app/start/AboutWindowController.h"
#include "contacts/model/NameTexts.h"

#include <QApplication>
#include <QMessageBox>

#include <algorithm>

namespace {

void bringToFront(QWidget *window)
{
    window->show();
    window->raise();
    window->activateWindow();
}

} // namespace

SideWindows::SideWindows(QWidget &mainWindow, ActivityLog &activity)
    : m_mainWindow(mainWindow), m_activity(activity) { }

void SideWindows::showAbout()
{
    if (!m_about)
        m_about = new AboutWindowController(m_activity, &m_mainWindow);
    m_about->showWindow();
}

void SideWindows::showHelp()
{
    openCopyOutside(QStringLiteral(":/help/Brindle PeopleNook_Help.pdf"),
        QApplication::applicationDisplayName() % QStringLiteral("_Help.pdf"), this, [this](bool isOpen) {
            if (isOpen) {
                qCDebug(lcApp, "sucess");
                return;
            }
            qCDebug(lcApp, "打开失败");
            showManual(HelpWindow::Part::Everything);
        });
}

void SideWindows::showKeys()
{
    showManual(HelpWindow::Part::Keys);
}

void SideWindows::showManual(HelpWindow::Part part)
{
    const auto windows = m_mainWindow.findChildren<HelpWindow *>();
    const auto found = std::ranges::find(windows, part, &HelpWindow::part);
    bringToFront(found == windows.end() ? new HelpWindow(part, &m_mainWindow) : *found);
}

void SideWindows::showActivity()
{
    auto *window = m_mainWindow.findChild<ActivityWindow *>();
    bringToFront(window ? window : new ActivityWindow(m_activity, &m_mainWindow));
}

void SideWindows::showHistory(const ABPersonPtr &person)
{
    const QString uid = person ? person->uniqueId() : QString();
    const QList<HistoryWindow *> windows = m_mainWindow.findChildren<HistoryWindow *>();
    const auto found = std::ranges::find(windows, uid, &HistoryWindow::uid);
    HistoryWindow *window = found == windows.end() ? nullptr : *found;
    if (window) {
        window->reload();
    } else {
        window = new HistoryWindow(&m_mainWindow, uid, person ? readableName(*person->record()) : QString());
        window->setAttribute(Qt::WA_DeleteOnClose);
        connect(window, &HistoryWindow::restored, this, [this](const QString &what) {
            m_activity.append(ActivityLog::Kind::Done, what);
            Q_EMIT peopleRestored();
        });
        connect(window, &HistoryWindow::failed, this, &SideWindows::noteFailure);
    }
    bringToFront(window);
}

void SideWindows::showCard(const ABPersonPtr &person, const QString &text)
{
    auto *card = new ContactCard(person, &m_mainWindow);
    card->setAttribute(Qt::WA_DeleteOnClose);
    connect(card, &ContactCard::saved, this, [this](const QString &uid) { Q_EMIT peopleChanged({uid}); });
    connect(card, &QDialog::rejected, this, [this, person] { Q_EMIT cardCancelled(person->uniqueId()); });
    connect(card, &ContactCard::failed, this, &SideWindows::noteFailure);
    connect(card, &ContactCard::restoreRequested, this, &SideWindows::restoreRequested);
    connect(card, &ContactCard::historyRequested, this, &SideWindows::showHistory);
    connect(card, &ContactCard::deletionRequested, this, &SideWindows::deletionRequested);
    if (!text.isEmpty())
        card->focusOn(text);
    card->show();
}

void SideWindows::showNewCard()
{
    if (ABAddressBook::sharedAddressBook())
        showCard(std::make_shared<ABPerson>());
}

void SideWindows::showComparison(const QList<ABPersonPtr> &people)
{
    constexpr qsizetype kMost = 20; // more columns than anyone can look through
    QList<ABPersonPtr> here = people;
    const auto book = ABAddressBook::sharedAddressBook();
    here.removeIf([&](const ABPersonPtr &person) { return !book || !book->containsRecord(person); });
    if (here.size() < 2 || here.size() > kMost) {
        const Job::Hold hold;
        QMessageBox::information(&m_mainWindow, tr("Compare and Merge"),
            here.size() < 2 ? tr("There are no longer two contacts to compare.")
                            : tr("Select at most %1 contacts to compare.").arg(kMost));
        return;
    }
    auto *window = new CompareWindow(here, &m_mainWindow);
    window->setAttribute(Qt::WA_DeleteOnClose);
    connect(window, &CompareWindow::merged, this, [this](const QStringList &uids) {
        const QString what = tr("Merged %1 into one").arg(counted(uids.size(), tr("contact"), tr("contacts")));
        m_activity.append(ActivityLog::Kind::Done, what);
        Q_EMIT merged(what);
        Q_EMIT peopleChanged(uids);
        leaveOutOfLikely({});
    });
    connect(window, &CompareWindow::differentPeople, this, [this](const QStringList &uids) {
        Q_EMIT differentPeople(uids);
        leaveOutOfLikely(uids);
    });
    connect(window, &CompareWindow::failed, this, &SideWindows::noteFailure);
    window->show();
}

void SideWindows::showIgnored()
{
    auto *window = m_mainWindow.findChild<IgnoredWindow *>();
    if (window) {
        window->reload();
    } else {
        window = new IgnoredWindow(&m_mainWindow);
        window->setAttribute(Qt::WA_DeleteOnClose);
        connect(window, &IgnoredWindow::broughtBack, this, &SideWindows::broughtBack);
        connect(window, &IgnoredWindow::failed, this, &SideWindows::noteFailure);
    }
    bringToFront(window);
}

void SideWindows::reloadIgnored()
{
    if (auto *window = m_mainWindow.findChild<IgnoredWindow *>())
        window->reload();
}

void SideWindows::showLikely(const QSet<QString> &among)
{
    auto *window = new LikelyWindow(among, &m_mainWindow);
    window->setAttribute(Qt::WA_DeleteOnClose);
    connect(window, &LikelyWindow::comparisonRequested, this, &SideWindows::showComparison);
    connect(window, &LikelyWindow::differentPeople, this, &SideWindows::differentPeople);
    bringToFront(window);
}

void SideWindows::leaveOutOfLikely(const QStringList &different)
{
    const auto windows = m_mainWindow.findChildren<LikelyWindow *>();
    for (LikelyWindow *window : windows)
        window->leaveOut(different);
}

void SideWindows::importFiles(const QStringList &paths)
{
    auto *window = new ImportWindow(paths, m_activity, &m_mainWindow);
    window->setAttribute(Qt::WA_DeleteOnClose);
    connect(window, &ImportWindow::imported, this, [this] { Q_EMIT peopleChanged({}); });
    connect(window, &ImportWindow::likelyRequested, this, &SideWindows::showLikely);
    window->show();
}

void SideWindows::noteFailure(const QString &reason)
{
    m_activity.append(ActivityLog::Kind::Failure, reason);
}
