// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/Scans.h"

#include "app/results/ProgressWindow.h"
#include "app/results/ResultsView.h"

Scans::Scans(MainWindow &window, Alerts &alerts, ConditionListModel &conditions)
    : m_window(window), m_alerts(alerts), m_conditions(conditions), m_scanner(*this)
{
    connect(&m_scanner, &ScanAddressBook::scanOver, this, &Scans::updateUI, Qt::DirectConnection);
}

Scans::~Scans()
{
    // A scan that runs may be waiting for this thread to answer it.
    m_alerts.answerEverythingFromNowOn();
    Job::runAndWait([this] { m_job.wait(); });
    m_window.showContacts();
}

void Scans::scanClicled()
{
    m_window.setButtonsEnabled(false);
    const QStringList titles = m_conditions.getSelectArray();
    if (titles.isEmpty()) {
        closeProgress();
        m_alerts.runAlertPanel(QStringLiteral("Warning"),
            QStringLiteral("No condition selected, please go to Preferences and choose at least one condition!"),
            QStringLiteral("OK"), {});
        makeButtonEnable();
        return;
    }
    m_titles = titles;
    m_conditions.setFound(titles, {}); // unless it finds something
    m_job.start([this, titles] { m_scanner.scanEntireAddressBook(titles); });
    m_window.progressWindow()->begin();
    m_reexamination.beginScan();
}

void Scans::updateUI(const ScanResult &result)
{
    Job::deliver(this, [this, result] { showResults(result); });
}

void Scans::showResults(const ScanResult &result)
{
    closeProgress();
    m_conditions.setFound(m_titles, result);
    m_window.showContacts();
    m_results = std::make_unique<OutlineViewController>(*this);
    m_results->setOutlineViewDataSouce(result);
    connect(m_results.get(), &OutlineViewController::fixed, this,
        [this](const FixOutcome &outcome, const PersonItemPtr &finding) {
            if (!outcome.error)
                return;
            Q_EMIT failed(outcome.error->description());
            if (outcome.error->kind == ErrorKind::Conflict)
                reexamine({finding->person()->uniqueId()});
        });
    m_window.showResults(*m_results);
    QMetaObject::invokeMethod(this, &Scans::outLineViewRefrash, Qt::QueuedConnection);
    makeButtonEnable();
}

void Scans::outLineViewRefrash()
{
    if (m_window.results())
        m_window.results()->refresh();
}

void Scans::reloadUI()
{
    // The view is handling an event, and the controller is carrying out a repair.
    Job::deliver(this, [this] {
        m_window.showContacts();
        if (m_results && m_results->findingCount() == 0)
            m_window.showNothingLeft();
        m_results.reset();
        Q_EMIT left();
    });
}

void Scans::closeProgress()
{
    m_alerts.onMainThread([this] {
        if (!m_window.progressWindow()->isVisible())
            return;
        m_window.progressWindow()->hide();
        m_window.activateWindow();
    });
}

void Scans::makeButtonEnable()
{
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_window.setButtonsEnabled(true);
            m_reexamination.endScan(m_results.get());
        },
        Qt::AutoConnection);
}

qsizetype Scans::subviewCount() const
{
    const ResultsView *view = m_window.results();
    return view ? view->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).size() : 0;
}
