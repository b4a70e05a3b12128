// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractListModel>
#include <QDateTime>

#include <deque>

/// What happened since the program started, newest last: diagnostic lines, files written, failures. Old entries are
/// dropped. Main thread only, except append().
class ActivityLog : public QAbstractListModel
{
    Q_OBJECT

public:
    enum class Kind { Diagnostic, Done, Failure };
    enum Role { KindRole = Qt::UserRole, FolderRole, TimeRole };

    /// Collects diagnostic lines from now on, critical ones as failures. Only one may exist.
    explicit ActivityLog(QObject *parent = nullptr);
    ~ActivityLog() override;

    /// Any thread. @p folder: that of a written file, else empty.
    void append(Kind kind, const QString &text, const QString &folder = {});

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

Q_SIGNALS:
    void failed(const QString &text);

private:
    struct Line
    {
        QDateTime time;
        Kind kind;
        QString text;
        QString folder;
    };
    void add(const Line &line);
    static void takeDiagnostic(QtMsgType type, const QMessageLogContext &context, const QString &text);

    std::deque<Line> m_lines;
    QtMessageHandler m_previousHandler;
};
