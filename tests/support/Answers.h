// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/AlertPanel.h"

#include <QStringList>

/// Answers every question in the same way and keeps them.
class Answers : public AlertPanel
{
public:
    explicit Answers(bool yes) : m_yes(yes) { }

    Answer runAlertPanel(const QString &title, const QString &message, const QString &defaultButton,
        const QString &alternateButton) override
    {
        m_questions += QStringList({title, message, defaultButton, alternateButton}).join(QLatin1Char('|'));
        return m_yes ? Answer::Default : Answer::Alternate;
    }

    const QStringList &questions() const { return m_questions; }

private:
    bool m_yes;
    QStringList m_questions;
};
