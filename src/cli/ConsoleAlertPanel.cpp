// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/ConsoleAlertPanel.h"

AlertPanel::Answer ConsoleAlertPanel::runAlertPanel(
    const QString &title, const QString &message, const QString &defaultButton, const QString &alternateButton)
{
    if (m_answeredInAdvance)
        return Answer::Default;
    if (!m_console.inIsTerminal || !m_console.errIsTerminal)
        return unanswered(title);
    const std::string wanted = defaultButton.toStdString();
    const std::string other = alternateButton.toStdString();
    m_console.err << title.toStdString() << '\n' << message.toStdString() << '\n';
    for (std::string line;;) {
        m_console.err << wanted << " or " << other << "? " << std::flush;
        if (!std::getline(m_console.in, line))
            return unanswered(title);
        const QString answer = QString::fromStdString(line).trimmed();
        if (answer.compare(defaultButton, Qt::CaseInsensitive) == 0)
            return Answer::Default;
        if (answer.compare(alternateButton, Qt::CaseInsensitive) == 0)
            return Answer::Alternate;
    }
}

AlertPanel::Answer ConsoleAlertPanel::unanswered(const QString &title)
{
    m_hasUnanswered = true;
    m_console.err << title.toStdString() << " There is no terminal to ask on; --yes answers in advance\n";
    return Answer::Alternate;
}
