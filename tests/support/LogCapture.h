// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QLoggingCategory>
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
        return s_lines.value(category);
    }

private:
    static void take(QtMsgType, const QMessageLogContext &context, const QString &line)
    {
        const std::scoped_lock lock(s_mutex);
        s_lines[QString::fromLatin1(context.category)] += line;
    }

    static inline std::mutex s_mutex;
    static inline QHash<QString, QStringList> s_lines;
    QtMessageHandler m_previous;
};
