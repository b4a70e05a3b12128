// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "results/OutlineViewController.h"

#include <QDialog>
#include <QTimer>

class QLabel;
class QPushButton;
class QTreeWidget;

/// Asks before several findings are repaired in one go: says what will happen to how many contacts and what would be
/// lost, and lets single ones be left out.
class FixAllDialog : public QDialog
{
    Q_OBJECT

public:
    static constexpr int kIgnored = 2; ///< a result beside those of QDialog

    FixAllDialog(QString option, QList<PersonItemPtr> findings, QWidget *parent);

    /// Those that are ticked, in their order.
    QList<PersonItemPtr> chosen() const;

private:
    void fill();
    void fillRows();
    void showCount();

    const QString m_option;
    const QList<PersonItemPtr> m_findings;
    QLabel *m_future;
    QTreeWidget *m_list;
    QTimer m_idle;
    qsizetype m_filled = 0; ///< rows that say what is wrong and what would be lost
    QPushButton *m_ignore;
    QPushButton *m_fix;
};

/// Lets the user choose among these findings of one group, repairs them with the option chosen for it, and selects what
/// comes then; or hands them to @p ignore. @return what to say about it; empty where nothing was done
QString fixAll(OutlineViewController &controller, const QList<PersonItemPtr> &findings, QWidget &window,
    const std::function<void(const QList<PersonItemPtr> &)> &ignore);
