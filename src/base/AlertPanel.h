// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// A modal question or message to the user. The application shows a window, the command line prints or asks on the
/// terminal, tests answer.
class AlertPanel
{
public:
    enum class Answer { Default, Alternate };

    virtual ~AlertPanel() = default;

    /// Returns when the user has answered. With an empty @p alternateButton the only answer is Default.
    /// May be called from any thread; an implementation with windows moves to the main thread itself.
    virtual Answer runAlertPanel(
        const QString &title, const QString &message, const QString &defaultButton, const QString &alternateButton) = 0;
};
