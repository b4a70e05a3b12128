// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/look/Alerts.h"

#include "app/look/Controls.h"
#include "base/Job.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QPushButton>
#include <QThread>

#include <future>

namespace {

constexpr int kRoomBesideTitle = 120; // for what a window manager has in a title bar

} // namespace

TitledBox::TitledBox(Icon icon, const QString &title, const QString &message, QWidget *parent) : QMessageBox(parent)
{
    setIcon(icon);
    setWindowTitle(title);
    setText(title);
    setInformativeText(message);
    setTextFormat(Qt::PlainText);
    // As wide as its texts, it may have no room for its title.
    const QString shown = title % QStringLiteral(" — ") % QGuiApplication::applicationDisplayName();
    const int width = fontMetrics().horizontalAdvance(shown) + kRoomBesideTitle;
    if (auto *grid = qobject_cast<QGridLayout *>(layout()))
        grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

AlertPanel::Answer Alerts::runAlertPanel(
    const QString &title, const QString &message, const QString &defaultButton, const QString &alternateButton)
{
    Answer answer = Answer::Alternate;
    if (m_isEnding)
        return answer;
    onMainThread([&] {
        const bool isNotice = alternateButton.isEmpty() && title == QStringLiteral("Notes"); // of an empty scan
        TitledBox box(isNotice ? QMessageBox::Information : QMessageBox::Warning, title, message, &m_window);
        QPushButton *accept = box.addButton(defaultButton, QMessageBox::AcceptRole);
        accept->setProperty(kDestructiveProperty, defaultButton == QStringLiteral("Delete"));
        if (!alternateButton.isEmpty())
            box.setEscapeButton(box.addButton(alternateButton, QMessageBox::RejectRole));
        box.setDefaultButton(accept);
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
