// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Alerts.h"

#include <QMessageBox>
#include <QPushButton>
#include <QThread>

AlertPanel::Answer Alerts::runAlertPanel(
    const QString &title, const QString &message, const QString &defaultButton, const QString &alternateButton)
{
    Answer answer = Answer::Alternate;
    if (m_isEnding)
        return answer;
    onMainThread([&] {
        QMessageBox box(&m_window);
        box.setIcon(alternateButton.isEmpty() ? QMessageBox::Information : QMessageBox::Warning);
        box.setWindowTitle(title);
        box.setText(title);
        box.setInformativeText(message);
        box.setTextFormat(Qt::PlainText);
        QPushButton *accept = box.addButton(defaultButton, QMessageBox::AcceptRole);
        if (!alternateButton.isEmpty())
            box.setEscapeButton(box.addButton(alternateButton, QMessageBox::RejectRole));
        box.setDefaultButton(accept);
        box.exec();
        answer = box.clickedButton() == accept ? Answer::Default : Answer::Alternate;
    });
    return answer;
}

void Alerts::onMainThread(const std::function<void()> &action)
{
    if (QThread::currentThread() == thread())
        action();
    else
        QMetaObject::invokeMethod(this, action, Qt::BlockingQueuedConnection);
}
