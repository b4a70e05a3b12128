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
#include <QTableWidget>

#include <algorithm>
#include <array>
#include <iterator>

namespace {

/// In the order of ChangeCause::Kind.
constexpr std::array kKindTitles{QT_TRANSLATE_NOOP("HistoryWindow", "Change"),
    QT_TRANSLATE_NOOP("HistoryWindow", "Repair"), QT_TRANSLATE_NOOP("HistoryWindow", "Edit"),
    QT_TRANSLATE_NOOP("HistoryWindow", "Deletion"), QT_TRANSLATE_NOOP("HistoryWindow", "Import"),
    QT_TRANSLATE_NOOP("HistoryWindow", "Contact card"), QT_TRANSLATE_NOOP("HistoryWindow", "Restore")};

QString causeText(const ChangeCause &cause)
{
    const QString kind = HistoryWindow::tr(kKindTitles[std::size_t(cause.kind)]);
    return cause.description.isEmpty() ? kind : kind + QStringLiteral(": ") + cause.description;
}

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

/// A table whose rows are read as lines.
QTableWidget *makeTable(const QStringList &titles, const QString &name, QWidget *parent)
{
    auto *table = new QTableWidget(0, int(titles.size()), parent);
    table->setHorizontalHeaderLabels(titles);
    table->setAccessibleName(name);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setTabKeyNavigation(false);
    table->setShowGrid(false);
    table->verticalHeader()->hide();
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->horizontalHeader()->setHighlightSections(false);
    return table;
}

void addRow(QTableWidget &table, const QStringList &texts)
{
    const int row = table.rowCount();
    table.insertRow(row);
    for (int column = 0; column < texts.size(); ++column)
        table.setItem(row, column, new QTableWidgetItem(texts[column]));
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
    , m_steps(makeTable({tr("When"), tr("What"), tr("Contacts")}, tr("Changes, newest first"), this))
    , m_people(new QListView(this))
    , m_differences(makeTable({tr("What"), tr("Before"), tr("After")}, tr("The contact before and after"), this))
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
    m_steps->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_steps->setWordWrap(false);
    m_steps->horizontalHeader()->setSectionResizeMode(What, QHeaderView::Stretch);
    m_steps->setColumnWidth(When, 160);
    m_steps->setColumnWidth(HowMany, 220);
    m_people->setModel(&m_changedPeople);
    m_people->setUniformItemSizes(true);
    m_people->setAccessibleName(tr("Contacts of the selected changes"));
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
    m_steps->setRowCount(0);
    for (const ChangeSummary &each : history ? *history : std::vector<ChangeSummary>()) {
        const int row = m_steps->rowCount();
        addRow(*m_steps,
            {QLocale().toString(each.savedAt.toLocalTime(), QLocale::ShortFormat), causeText(each.cause),
                countsText(each.added, each.changed, each.removed)});
        for (const StepColumn column : {When, What, HowMany})
            m_steps->item(row, column)->setToolTip(m_steps->item(row, column)->text());
        m_steps->item(row, When)->setData(Qt::UserRole, each.cause.id);
    }
    selectionChanged();
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
        ids += row.data(Qt::UserRole).toString();
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
    for (const RecordDifference &each : recordDifferences(change.before.get(), change.after.get()))
        addRow(*m_differences, {propertyTitle(each.name), shown(each.before), shown(each.after)});
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
