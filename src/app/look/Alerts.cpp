// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/look/Alerts.h"

#include "app/look/Controls.h"
#include "base/Job.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QThread>

#include <future>

namespace {

constexpr int kRoomBesideTitle = 120; // for what a window manager has in a title bar

/// A message box is as wide as its texts, which may leave no room for its title.
void makeRoomForTitle(QMessageBox &box)
{
    auto *layout = qobject_cast<QGridLayout *>(box.layout());
    const QString title = box.windowTitle() % QStringLiteral(" — ") % QGuiApplication::applicationDisplayName();
    const int width = box.fontMetrics().horizontalAdvance(title) + kRoomBesideTitle;
    if (layout)
        layout->addItem(new QSpacerItem(width, 0), layout->rowCount(), 0, 1, layout->columnCount());
}

} // namespace

AlertPanel::Answer Alerts::runAlertPanel(
    const QString &title, const QString &message, const QString &defaultButton, const QString &alternateButton)
{
    Answer answer = Answer::Alternate;
    if (m_isEnding)
        return answer;
    onMainThread([&] {
        QMessageBox box(&m_window);
        const bool isNotice = alternateButton.isEmpty() && title == QStringLiteral("Notes"); // of an empty scan
        box.setIcon(isNotice ? QMessageBox::Information : QMessageBox::Warning);
        box.setWindowTitle(title);
        box.setText(title);
        box.setInformativeText(message);
        box.setTextFormat(Qt::PlainText);
        QPushButton *accept = box.addButton(defaultButton, QMessageBox::AcceptRole);
        accept->setProperty(kDestructiveProperty, defaultButton == QStringLiteral("Delete"));
        if (!alternateButton.isEmpty())
            box.setEscapeButton(box.addButton(alternateButton, QMessageBox::RejectRole));
        box.setDefaultButton(accept);
        makeRoomForTitle(box);
        const Job::Hold hold;
        box.exec();
        answer = box.clickedButton() == accept ? Answer::Default : Answer::Alternate;
    });
    return answer;
}

void Alerts::onMainThread(const std::function<void()> &action)
{
    if (QThread::currentThread() == thread()) {
        action();
        return;
    }
    // Not a blocking connection, whose end the thread sanitizer cannot see.
    std::promise<void> done;
    QMetaObject::invokeMethod(
        this,
        [&action, &done] {
            action();
            done.set_value();
        },
        Qt::QueuedConnection);
    done.get_future().wait();
}
