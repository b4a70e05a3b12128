// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/history/ChangedPeopleModel.h"
#include "app/look/ListWindow.h"
#include "base/Job.h"
#include "base/Result.h"

class QListView;
class QTableWidget;

/// The changes of the shared address book, each person before and after, and a button that undoes the selected ones.
/// Reads and restores in jobs.
class HistoryWindow : public ListWindow
{
    Q_OBJECT

public:
    enum StepColumn { When, What, HowMany }; ///< of steps()

    /// With a uid, only the changes of that person, who goes by this name.
    explicit HistoryWindow(QWidget *parent = nullptr, const QString &uid = {}, const QString &name = {});
    /// Waits for a running restore.
    ~HistoryWindow() override;

    /// Reads the history again and clears the selection.
    void reload();
    void restoreSelected();

    const QString &uid() const { return m_uid; }
    QTableWidget *steps() const { return m_steps; }
    QListView *people() const { return m_people; }
    QTableWidget *differences() const { return m_differences; }
    QPushButton *restoreButton() const { return m_restore; }

Q_SIGNALS:
    void loaded(); ///< the history or an error is shown
    void stepShown(); ///< the people of the selected changes are shown
    void restored(const QString &what); ///< the address book has changed
    void failed(const QString &reason);

protected:
    /// Stays open during a restore, to report its outcome.
    void closeEvent(QCloseEvent *event) override;

private:
    void setUpLists();
    void showHistory(const Result<std::vector<ChangeSummary>> &history);
    QStringList selectedSteps() const;
    void selectionChanged();
    void showStep(const Result<ChangedPeopleModel::Step> &step);
    void showPerson(const QModelIndex &index);
    void finishRestore(const Result<QString> &done);

    const QString m_uid; ///< null: everybody's changes
    ChangedPeopleModel m_changedPeople;
    QTableWidget *m_steps;
    QListView *m_people;
    QTableWidget *m_differences;
    QPushButton *m_restore;
    Job m_reader;
    Job m_stepReader;
    Job m_restorer;
};
