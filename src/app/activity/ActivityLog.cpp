// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/activity/ActivityLog.h"

#include "app/look/Controls.h"

#include <QLoggingCategory>

#include <atomic>
#include <cstdio>

namespace {

constexpr std::size_t kMostLines = 5000;
constexpr qsizetype kLongestLine = 1000; // of diagnostics, which may tell of many contacts at once
std::atomic<ActivityLog *> s_log = nullptr; // a message handler is told nothing of its owner

/// Where a line belongs outside the program: categories that end in .stdout bring their own line end, if any.
void print(const char *category, const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    if (QLatin1StringView(category).endsWith(QLatin1StringView(".stdout"))) {
        std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stdout);
        std::fflush(stdout);
    } else {
        std::fprintf(stderr, "%s: %s\n", category, bytes.constData());
    }
}

} // namespace

ActivityLog::ActivityLog(QObject *parent) : QAbstractListModel(parent)
{
    s_log = this;
    QLoggingCategory::setFilterRules(QStringLiteral("peoplenook.*.debug=true\n*.trace.debug=false"));
    m_previousHandler = qInstallMessageHandler(takeDiagnostic);
}

ActivityLog::~ActivityLog()
{
    qInstallMessageHandler(m_previousHandler);
    s_log = nullptr;
}

void ActivityLog::takeDiagnostic(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    const QLatin1StringView category(context.category ? context.category : "default");
    const bool isOurs = category.startsWith(QLatin1StringView("peoplenook."));
    if (isOurs || type != QtDebugMsg)
        print(category.data(), text);
    ActivityLog *log = s_log;
    if (log && isOurs)
        log->append(type == QtCriticalMsg ? Kind::Failure : Kind::Diagnostic, text.trimmed().left(kLongestLine));
}

void ActivityLog::append(Kind kind, const QString &text, const QString &folder)
{
    const Line line{QDateTime::currentDateTime(), kind, text, folder};
    QMetaObject::invokeMethod(
        this, [this, line] { add(line); }, Qt::AutoConnection);
}

void ActivityLog::add(const Line &line)
{
    if (m_lines.size() == kMostLines) {
        beginRemoveRows({}, 0, 0);
        m_lines.pop_front();
        endRemoveRows();
    }
    const int row = int(m_lines.size());
    beginInsertRows({}, row, row);
    m_lines.push_back(line);
    endInsertRows();
    if (line.kind == Kind::Failure)
        Q_EMIT failed(line.text);
}

int ActivityLog::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_lines.size());
}

QVariant ActivityLog::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const Line &line = m_lines[std::size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole: {
        const QString time = line.time.time().toString(Qt::ISODate);
        return line.kind == Kind::Failure ? tr("%1  Failed: %2").arg(time, line.text)
                                          : QStringLiteral("%1  %2").arg(time, line.text);
    }
    case Qt::DecorationRole:
        return line.kind == Kind::Failure ? symbol(QStringLiteral("dialog-warning"), ColourRole::Warning) : QVariant();
    case KindRole:
        return int(line.kind);
    case FolderRole:
        return line.folder;
    case TimeRole:
        return line.time;
    default:
        return {};
    }
}
