// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLoggingCategory>
#include <QStringList>

/// Keeps the program's diagnostic lines while it lives, as "category: text" without "peoplenook.". One at a time.
class LogLines
{
public:
    LogLines()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("peoplenook.*.debug=true"));
        s_lines.clear();
        m_previous = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &context, const QString &text) {
            s_lines += QString::fromUtf8(context.category).section(QLatin1Char('.'), 1) + QStringLiteral(": ") + text;
        });
    }
    ~LogLines()
    {
        qInstallMessageHandler(m_previous);
        QLoggingCategory::setFilterRules({});
    }
    LogLines(const LogLines &) = delete;
    LogLines &operator=(const LogLines &) = delete;

    QStringList take() { return std::exchange(s_lines, {}); }

private:
    static inline QStringList s_lines;
    QtMessageHandler m_previous;
};
