// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/look/Alerts.h"
#include "app/results/ConditionListModel.h"
#include "app/results/Reexamination.h"
#include "app/start/MainWindow.h"
#include "base/Job.h"
#include "fix/IgnoredFindings.h"
#include "results/OutlineViewController.h"
#include "scan/ScanAddressBook.h"

/// The scans of the main window: runs them behind the progress window, shows the results instead of the contacts, and
/// rechecks findings of people changed since. Back keeps the results, also for the next start. Main thread unless
/// documented otherwise.
class Scans : public QObject, public ScanDelegate, public ResultsDelegate
{
    Q_OBJECT

public:
    /// All must outlive this.
    Scans(MainWindow &window, Alerts &alerts, ConditionListModel &conditions);
    /// Waits for a running scan, without further questions.
    ~Scans() override;

    bool isRunning() const { return m_job.isRunning(); }
    /// Null before the first scan with findings, and once none is left. After Back they wait to be continued.
    OutlineViewController *results() { return m_results.get(); }
    /// For changed people.
    void reexamine(const QStringList &uids) { m_reexamination.reexamine(uids); }
    void goToNew() { m_reexamination.goToNew(); }

    /// Remembers that these findings are fine, or that no two of these people are one, and looks at them again.
    void ignore(const QList<PersonItemPtr> &findings);
    void rememberDifferent(const QStringList &uids);
    /// For what is ignored by now, or no longer.
    void reexamineIgnored(const std::vector<Ignored> &entries);

    void scanClicled();
    /// Offers to continue with the findings that were left when the program ended, as far as they still hold.
    void offerKept();
    /// Shows the results that Back left, after examining again who has changed since.
    void continueResults();
    /// Shows a scan's results. Any thread.
    void updateUI(const ScanResult &result);
    void outLineViewRefrash();

    // For the controllers. The first three may be called on any thread.
    void closeProgress() override;
    void makeButtonEnable() override;
    AlertPanel &alertPanel() override { return m_alerts; }
    void selectInAddressBook(const ABPersonPtr &person) override { Q_EMIT personRequested(person); }
    void editInAddressBook(const ABPersonPtr &person) override { Q_EMIT personRequested(person); }
    void reloadUI() override;
    qsizetype subviewCount() const override;

Q_SIGNALS:
    void failed(const QString &reason); ///< a repair, or to remember what is ignored
    void personRequested(const ABPersonPtr &person); ///< to be edited
    void ignored(const std::vector<Ignored> &entries); ///< by now
    void left(); ///< the results, for the contacts

private:
    using Results = std::shared_ptr<OutlineViewController>;

    Results resultsOf(const IgnoredFindings::Split &found);
    void showResults(const Results &results, const ScanResult &found);
    void setResults(const Results &results);
    void showView();
    void offerResults();
    void keepResults() const;
    void remember(const std::function<std::vector<Ignored>()> &entries);

    MainWindow &m_window;
    Alerts &m_alerts;
    ConditionListModel &m_conditions;
    QStringList m_titles; // of the last scan
    ScanAddressBook m_scanner;
    Results m_results;
    PeopleSnapshot m_left; // everyone when the results were left; null while they are shown
    Reexamination m_reexamination;
    Job m_ignoring;
    Job m_job;
    Job m_examiner;
};
