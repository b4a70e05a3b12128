// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/history/HistoryWindow.h"

#include "contacts/book/RestorePlan.h"
#include "contacts/model/RecordDifferences.h"

#include <QCloseEvent>
#include <QHeaderView>
#include <QListView>
#include <QPushButton>
#include <QSplitter>
#include <QTableView>
#include <QTableWidget>

#include <algorithm>
#include <array>
#include <iterator>

namespace {

/// Titles of the columns of m_differences.
constexpr std::array kDifferenceTitles{QT_TRANSLATE_NOOP("HistoryWindow", "What"),
    QT_TRANSLATE_NOOP("HistoryWindow", "Before"), QT_TRANSLATE_NOOP("HistoryWindow", "After")};

Result<QString> restoreCauses(const QStringList &ids)
{
    const auto book = ABAddressBook::sharedAddressBook();
    if (!book)
        return noAddressBook();
    const auto plan = planRestore(*book, ids);
    if (!plan)
        return plan.error();
    if (const auto applied = restore(*book, *plan); !applied)
        return applied.error();
    return countsText(plan->added, plan->changed, plan->removed);
}

/// All that these changes did, the newest first, as if it were one; with a uid, only to that person.
Result<ChangedPeopleModel::Step> stepsTogether(
    const QStringList &ids, const QString &uid, const std::stop_token &isSuperseded)
{
    const auto book = ABAddressBook::sharedAddressBook();
    auto together = std::make_shared<ChangeStep>();
    for (const QString &id : ids) {
        if (isSuperseded.stop_requested())
            break;
        auto step = book ? book->historyStep(id) : Result<ChangeStep>(noAddressBook());
        if (!step)
            return step.error();
        std::ranges::copy_if(step->changes, std::back_inserter(together->changes),
            [&](const RecordedChange &change) { return uid.isNull() || change.uid == uid; });
    }
    return ChangedPeopleModel::Step(together);
}

using History = Result<std::vector<ChangeSummary>>;

/// Of everybody, or of the person with this uid.
History historyOf(const QString &uid, const std::stop_token &isSuperseded)
{
    const auto book = ABAddressBook::sharedAddressBook();
    if (!book)
        return noAddressBook();
    auto history = book->history();
    if (!history || uid.isNull())
        return history;
    std::erase_if(*history, [&](const ChangeSummary &summary) {
        if (isSuperseded.stop_requested())
            return true;
        const auto step = book->historyStep(summary.cause.id);
        return !step || std::ranges::find(step->changes, uid, &RecordedChange::uid) == step->changes.end();
    });
    return history;
}

/// Nothing in the cell tells an absent value from an empty one.
QString shown(const QString &text)
{
    return text.isNull() ? QString() : text.isEmpty() ? HistoryWindow::tr("(empty)") : text;
}

} // namespace

HistoryWindow::HistoryWindow(QWidget *parent, const QString &uid, const QString &name)
    : ListWindow(uid.isNull() ? tr("Change History") : tr("History of %1").arg(name), {860, 600}, parent)
    , m_uid(uid)
    , m_steps(new QTableView(this))
    , m_people(new QListView(this))
    , m_differences(new QTableWidget(0, int(std::size(kDifferenceTitles)), this))
    , m_restore(new QPushButton(tr("&Restore"), this))
{
    setUpLists();
    m_restore->setEnabled(false);
    connect(m_restore, &QPushButton::clicked, this, &HistoryWindow::restoreSelected);
    auto *details = new QSplitter(Qt::Horizontal);
    details->addWidget(m_people);
    details->addWidget(m_differences);
    details->setStretchFactor(1, 2);
    auto *halves = new QSplitter(Qt::Vertical);
    halves->addWidget(m_steps);
    halves->addWidget(details);
    setContent(halves, m_restore, tr("No changes yet"), tr("Every change will be listed here and can be undone."));
    m_steps->setFocus();
    reload();
}

HistoryWindow::~HistoryWindow() = default;

void HistoryWindow::setUpLists()
{
    m_steps->setModel(&m_history);
    m_steps->setAccessibleName(tr("Changes, newest first"));
    m_steps->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_steps->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_steps->setTabKeyNavigation(false);
    m_steps->setWordWrap(false);
    m_steps->verticalHeader()->hide();
    m_steps->horizontalHeader()->setSectionResizeMode(HistoryModel::What, QHeaderView::Stretch);
    for (QTableView *table : {m_steps, static_cast<QTableView *>(m_differences)}) {
        table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        table->horizontalHeader()->setHighlightSections(false);
        table->setShowGrid(false);
    }
    m_steps->setColumnWidth(HistoryModel::When, 160);
    m_steps->setColumnWidth(HistoryModel::HowMany, 220);
    m_people->setModel(&m_changedPeople);
    m_people->setUniformItemSizes(true);
    m_people->setAccessibleName(tr("Contacts of the selected changes"));
    QStringList titles;
    for (const char *title : kDifferenceTitles)
        titles += tr(title);
    m_differences->setHorizontalHeaderLabels(titles);
    m_differences->setAccessibleName(tr("The contact before and after"));
    m_differences->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_differences->setTabKeyNavigation(false);
    m_differences->verticalHeader()->hide();
    m_differences->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_differences->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    connect(m_steps->selectionModel(), &QItemSelectionModel::selectionChanged, this, &HistoryWindow::selectionChanged);
    connect(m_people->selectionModel(), &QItemSelectionModel::currentChanged, this, &HistoryWindow::showPerson);
}

void HistoryWindow::closeEvent(QCloseEvent *event)
{
    event->setAccepted(isEnabled());
}

void HistoryWindow::reload()
{
    m_reader.restart([uid = m_uid](const std::stop_token &isSuperseded) { return historyOf(uid, isSuperseded); },
        [this](const History &history) { showHistory(history); });
}

void HistoryWindow::showHistory(const Result<std::vector<ChangeSummary>> &history)
{
    m_history.setSteps(history ? *history : std::vector<ChangeSummary>());
    selectionChanged(); // a reset emits no signal
    if (!history)
        say(history.error().description());
    setEmpty(history && history->empty());
    Q_EMIT loaded();
}

QStringList HistoryWindow::selectedSteps() const
{
    QModelIndexList rows = m_steps->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    QStringList ids;
    for (const QModelIndex &row : std::as_const(rows))
        ids += m_history.step(row.row()).cause.id;
    return ids;
}

void HistoryWindow::selectionChanged()
{
    const QStringList ids = selectedSteps();
    m_restore->setEnabled(!ids.isEmpty() && !ABAddressBook::isSharedReadOnly());
    m_changedPeople.setStep(nullptr);
    m_differences->setRowCount(0);
    if (ids.isEmpty())
        m_stepReader.drop();
    else
        m_stepReader.restart(
            [ids, uid = m_uid](const std::stop_token &isSuperseded) { return stepsTogether(ids, uid, isSuperseded); },
            [this](const Result<ChangedPeopleModel::Step> &step) { showStep(step); });
}

void HistoryWindow::showStep(const Result<ChangedPeopleModel::Step> &step)
{
    if (step) {
        m_changedPeople.setStep(*step);
        m_people->setCurrentIndex(m_changedPeople.index(0));
    } else {
        say(step.error().description());
    }
    Q_EMIT stepShown();
}

void HistoryWindow::showPerson(const QModelIndex &index)
{
    m_differences->setRowCount(0);
    if (!index.isValid())
        return;
    const RecordedChange &change = m_changedPeople.change(index.row());
    if (change.afterIsLost) {
        say(tr("Another program has since changed this contact; how it was saved is no longer known."));
        return;
    }
    for (const RecordDifference &each : recordDifferences(change.before.get(), change.after.get())) {
        const int row = m_differences->rowCount();
        m_differences->insertRow(row);
        int column = 0;
        for (const QString &text : {propertyTitle(each.name), shown(each.before), shown(each.after)})
            m_differences->setItem(row, column++, new QTableWidgetItem(text));
    }
}

void HistoryWindow::restoreSelected()
{
    const QStringList ids = selectedSteps();
    if (ids.isEmpty())
        return;
    setEnabled(false); // what is asked for next is about the history as it is then
    m_restorer.start(
        [ids] { return restoreCauses(ids); }, [this](const Result<QString> &done) { finishRestore(done); });
}

void HistoryWindow::finishRestore(const Result<QString> &done)
{
    setEnabled(true);
    m_steps->setFocus(); // a disabled window has lost it
    if (!done) {
        say(done.error().description());
        Q_EMIT failed(done.error().description());
        return;
    }
    say(tr("Restored: %1.").arg(*done));
    reload();
    Q_EMIT restored(message());
}
