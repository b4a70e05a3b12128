// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/CommandContext.h"

/// One line on the terminal that is written over, and removed in the end; nothing elsewhere.
class ProgressLine
{
public:
    ProgressLine(const Console &console, QString head) : m_console(console), m_head(std::move(head)) { }
    ~ProgressLine()
    {
        if (m_percent >= 0)
            m_console.err << "\r\033[K" << std::flush;
    }
    ProgressLine(const ProgressLine &) = delete;
    ProgressLine &operator=(const ProgressLine &) = delete;

    void show(int percent)
    {
        if (!m_console.errIsTerminal || percent == m_percent)
            return;
        m_percent = percent;
        m_console.err << '\r' << onOneLine(m_head) << percent << " %" << std::flush;
    }

private:
    const Console &m_console;
    const QString m_head;
    int m_percent = -1;
};
