// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// A modal question or message. The application shows a window, the command line asks on the terminal, tests answer.
class AlertPanel
{
public:
    enum class Answer { Default, Alternate };

    virtual ~AlertPanel() = default;

    /// Returns the user's answer; with an empty @p alternateButton that is always Default. Any thread: implementations
    /// with windows switch to the main thread.
    virtual Answer runAlertPanel(
        const QString &title, const QString &message, const QString &defaultButton, const QString &alternateButton) = 0;
};
