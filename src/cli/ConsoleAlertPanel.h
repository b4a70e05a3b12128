// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/AlertPanel.h"
#include "cli/CommandLine.h"

/// Answers questions on the command line: with the default answer when the user gave it in advance, else by asking on
/// the terminal. Where nobody can be asked, or the input ends, the answer is Alternate and the question counts as
/// unanswered.
class ConsoleAlertPanel : public AlertPanel
{
public:
    ConsoleAlertPanel(Console &console, bool answeredInAdvance)
        : m_console(console), m_answeredInAdvance(answeredInAdvance)
    { }

    Answer runAlertPanel(const QString &title, const QString &message, const QString &defaultButton,
        const QString &alternateButton) override;

    /// Some question got no answer; standard error says which.
    bool hasUnanswered() const { return m_hasUnanswered; }

private:
    Answer unanswered(const QString &title);

    Console &m_console;
    const bool m_answeredInAdvance;
    bool m_hasUnanswered = false;
};
