// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/AlertPanel.h"

#include <QMessageBox>

#include <atomic>
#include <functional>

/// A message box in plain text, wide enough for its title, which is its first text too.
class TitledBox : public QMessageBox
{
    Q_OBJECT

public:
    TitledBox(Icon icon, const QString &title, const QString &message, QWidget *parent);
};

/// Shows questions and messages as windows.
class Alerts : public QObject, public AlertPanel
{
    Q_OBJECT

public:
    /// @p window must outlive this and owns the alerts.
    explicit Alerts(QWidget &window) : m_window(window) { }

    /// Any thread; waits for the user.
    Answer runAlertPanel(const QString &title, const QString &message, const QString &defaultButton,
        const QString &alternateButton) override;

    /// Runs @p action on the main thread and waits for it. Any thread.
    void onMainThread(const std::function<void()> &action);

    /// The program ends: every answer is Alternate, without asking.
    void answerEverythingFromNowOn() { m_isEnding = true; }

private:
    QWidget &m_window;
    std::atomic<bool> m_isEnding = false;
};
