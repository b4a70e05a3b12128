// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLoggingCategory>
#include <QRegularExpression>
#include <QStringList>

#include <mutex>

/// Collects the program's diagnostic lines, debug lines included, while it lives; one at a time.
class LogCapture
{
public:
    LogCapture()
    {
        s_lines.clear();
        QLoggingCategory::setFilterRules(QStringLiteral("peoplenook.*.debug=true\n*.trace.debug=false"));
        m_previous = qInstallMessageHandler(take);
    }
    ~LogCapture()
    {
        qInstallMessageHandler(m_previous);
        QLoggingCategory::setFilterRules({});
    }
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    QStringList of(const QString &category) const
    {
        const std::scoped_lock lock(s_mutex);
        QStringList lines = s_lines.filter(QRegularExpression(u'^' + category + QStringLiteral(": ")));
        return lines.replaceInStrings(QRegularExpression(QStringLiteral("^[^ ]*: ")), QString());
    }
    /// All so far, as "category: text" without "peoplenook.".
    QStringList take()
    {
        const std::scoped_lock lock(s_mutex);
        return std::exchange(s_lines, {})
            .replaceInStrings(QRegularExpression(QStringLiteral("^peoplenook.")), QString());
    }

private:
    static void take(QtMsgType, const QMessageLogContext &context, const QString &line)
    {
        const std::scoped_lock lock(s_mutex);
        s_lines += QString::fromLatin1(context.category) + QStringLiteral(": ") + line;
    }

    static inline std::mutex s_mutex;
    static inline QStringList s_lines;
    QtMessageHandler m_previous;
};
