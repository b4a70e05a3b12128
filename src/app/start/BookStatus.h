// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>
#include <QStatusBar>
#include <QTimer>

class QToolButton;

/// The main window's status bar: the address book or the progress of opening it, and an unobtrusive mark for the last
/// failure.
class BookStatus : public QStatusBar
{
    Q_OBJECT

public:
    explicit BookStatus(QWidget *parent = nullptr);

    void setName(const QString &name);
    /// Of the contact table, while that is shown.
    void setSummary(const QString &summary);
    void setSummaryShown(bool isShown) { m_summary->setVisible(isShown); }
    void setReadOnly(const QString &reason);
    /// Can be cancelled; hidden once there is a name.
    void setOpening(qint64 done, qint64 total);
    void setFailure(const QString &newest); ///< empty: none to be shown any more
    /// What was done, for a while, with a link that takes it back where that can be.
    void setMessage(const QString &done, bool canUndo);
    QString message() const { return m_message->toolTip(); }

Q_SIGNALS:
    void undoPressed();
    void openingGivenUp();
    void failurePressed();

private:
    void setUpMessage();

    QLabel *m_name;
    QLabel *m_summary;
    QToolButton *m_giveUp;
    QToolButton *m_failure;
    QWidget *m_toast;
    QLabel *m_message;
    QToolButton *m_undo;
    QTimer m_messageTime;
};
