// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/Scans.h"

#include "app/results/KeptFindings.h"
#include "app/results/ProgressWindow.h"
#include "app/results/ResultsView.h"

#include <QTimer>

namespace {

/// The uids of all who have been changed, added or removed in between.
QStringList changedBetween(const PeopleSnapshot &before, const PeopleSnapshot &now)
{
    QHash<const ABPerson *, PersonRecordPtr> records;
    for (const auto &[person, record] : *before)
        records.insert(person.get(), record);
    QStringList uids;
    for (const auto &[person, record] : *now) {
        if (records.take(person.get()) != record)
            uids += person->uniqueId();
    }
    for (const auto &[person, record] : *before) {
        if (records.contains(person.get()))
            uids += person->uniqueId();
    }
    return uids;
}

/// Here, so that neither the first look at duplicates nor the first merge needs to wait for it.
void indexPeople()
{
    if (const auto book = ABAddressBook::sharedAddressBook()) {
        book->peopleWithNameKey({});
        book->personWithUniqueId({});
    }
}

} // namespace

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
    keepResults();
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
    indexPeople();
    const auto split = IgnoredFindings::splitShared(result);
    const bool isAllIgnored = split.open.isEmpty() && !split.ignored.isEmpty();
    if (!isAllIgnored) {
        Job::deliver(this, [this, results = resultsOf(split), split] { showResults(results, split.open); });
        return;
    }
    closeProgress();
    m_alerts.runAlertPanel(QStringLiteral("Notes"),
        tr("Scan completed. Everything found is ignored; Contacts > Ignored Findings brings it back."),
        QStringLiteral("OK"), {});
    makeButtonEnable();
}

void Scans::ignore(const QList<PersonItemPtr> &findings)
{
    std::vector<Finding> values;
    for (const auto &finding : findings)
        values.push_back(finding->finding());
    remember([values] {
        std::vector<Ignored> entries;
        for (const Finding &finding : values) {
            if (auto entry = IgnoredFindings::entryFor(finding))
                entries.push_back(std::move(*entry));
        }
        return entries;
    });
}

void Scans::rememberDifferent(const QStringList &uids)
{
    remember([uids] { return std::vector{IgnoredFindings::differentPeople(uids)}; });
}

void Scans::remember(const std::function<std::vector<Ignored>()> &entries)
{
    using Remembered = Result<std::vector<Ignored>>;
    m_ignoring.start(
        [entries, book = ABAddressBook::sharedAddressBook()]() -> Remembered {
            const std::vector<Ignored> all = entries();
            const auto changed = book ? book->changeIgnored(all, {}) : Result<void>(noAddressBook());
            return changed ? Remembered(all) : changed.error();
        },
        [this](const Remembered &remembered) {
            if (!remembered)
                Q_EMIT failed(remembered.error().description());
            if (!remembered || remembered->empty())
                return;
            reexamineIgnored(*remembered);
            Q_EMIT ignored(*remembered);
        });
}

void Scans::reexamineIgnored(const std::vector<Ignored> &entries)
{
    QStringList uids;
    for (const Ignored &entry : entries)
        uids += entry.uids;
    reexamine(uids);
}

/// With its tree, which takes too long for the main thread. Any thread.
Scans::Results Scans::resultsOf(const IgnoredFindings::Split &found)
{
    auto results = std::make_shared<OutlineViewController>(*this);
    results->setOutlineViewDataSouce(found.open, found.ignored);
    results->moveToThread(thread());
    return results;
}

void Scans::showResults(const Results &results, const ScanResult &found)
{
    closeProgress();
    m_conditions.setFound(m_titles, found);
    setResults(results);
    showView();
    offerResults();
    m_window.results()->setUpdatesEnabled(false);
    QTimer::singleShot(0, this, &Scans::outLineViewRefrash); // after what the user did in between
    makeButtonEnable();
}

void Scans::showView()
{
    m_window.showResults(*m_results);
    connect(m_window.results(), &ResultsView::ignoreRequested, this, &Scans::ignore);
}

void Scans::setResults(const Results &results)
{
    m_window.showContacts();
    m_left = nullptr;
    m_results = results;
    connect(m_results.get(), &OutlineViewController::fixed, this,
        [this](const FixOutcome &outcome, const PersonItemPtr &finding) {
            if (!outcome.error)
                return;
            Q_EMIT failed(outcome.error->description());
            if (outcome.error->kind == ErrorKind::Conflict)
                reexamine({finding->person()->uniqueId()});
        });
    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(&m_results->model(), signal, this, &Scans::offerResults);
}

void Scans::offerKept()
{
    m_examiner.restart(
        [this, book = ABAddressBook::sharedAddressBook()] {
            indexPeople();
            const KeptFindings kept = KeptFindings::load(book->name());
            return std::pair(kept, resultsOf(kept.examine()));
        },
        [this](const std::pair<KeptFindings, Results> &found) {
            if (m_results || isRunning() || found.second->rootNodes().isEmpty())
                return;
            setResults(found.second);
            found.first.select(*m_results);
            m_left = ABAddressBook::sharedAddressBook()->snapshot();
            m_reexamination.endScan(m_results.get());
            offerResults();
        });
}

void Scans::continueResults()
{
    if (!m_left)
        return;
    m_examiner.restart(
        [left = m_left, titles = m_results->conditionTitles()] {
            const PeopleSnapshot now = ABAddressBook::sharedAddressBook()->snapshot();
            return std::pair(changedBetween(left, now), IgnoredFindings::splitShared(ScanAddressBook::examine(titles)));
        },
        [this](const std::pair<QStringList, IgnoredFindings::Split> &found) {
            if (!m_left)
                return;
            m_results->reexamine(found.first, found.second.open, found.second.ignored);
            if (m_results->rootNodes().isEmpty()) // and so it was left once more
                return;
            m_left = nullptr;
            showView();
            m_window.results()->resume();
            offerResults();
        });
}

/// Where they wait.
void Scans::offerResults()
{
    m_window.offerResults(m_left ? m_results->findingCount() : 0);
}

void Scans::keepResults() const
{
    const auto book = ABAddressBook::sharedAddressBook();
    if (book && m_results)
        KeptFindings(*m_results).save(book->name());
}

void Scans::outLineViewRefrash()
{
    ResultsView *results = m_window.results();
    if (!results)
        return;
    results->refresh();
    QTimer::singleShot(0, results, [results] { results->setUpdatesEnabled(true); }); // painting takes as long again
}

void Scans::reloadUI()
{
    // The view is handling an event, and the controller is carrying out a repair.
    Job::deliver(this, [this] {
        if (!m_results)
            return;
        m_window.showContacts();
        m_left = ABAddressBook::sharedAddressBook()->snapshot();
        m_results->setFilter({});
        keepResults();
        if (m_results->findingCount() == 0) {
            m_results.reset();
            m_left = nullptr;
            m_window.showNothingLeft();
        }
        offerResults();
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
