// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/AlertPanel.h"
#include "cli/CommandLine.h"

/// Answers questions with the default if the user agreed in advance, otherwise asks on the terminal. Without a
/// terminal, or at the end of input, the answer is Alternate and the question counts as unanswered.
class ConsoleAlertPanel : public AlertPanel
{
public:
    ConsoleAlertPanel(Console &console, bool answeredInAdvance)
        : m_console(console), m_answeredInAdvance(answeredInAdvance)
    { }

    Answer runAlertPanel(const QString &title, const QString &message, const QString &defaultButton,
        const QString &alternateButton) override;

    /// A question was not answered; standard error says which.
    bool hasUnanswered() const { return m_hasUnanswered; }

private:
    Answer unanswered(const QString &title);

    Console &m_console;
    const bool m_answeredInAdvance;
    bool m_hasUnanswered = false;
};
