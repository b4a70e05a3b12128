// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/FixAllDialog.h"

#include "app/look/Controls.h"
#include "app/results/RepairTexts.h"
#include "base/Job.h"
#include "fix/ProblemPlaces.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressDialog>
#include <QPushButton>
#include <QScopeGuard>
#include <QSet>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr QSize kFirstSize(860, 560);
constexpr int kMillisecondsOfTurn = 10; // between two looks at what the user does
constexpr int kMillisecondsToProgress = 500;

constexpr int kProblem = 1; // columns
constexpr int kLost = 2;
constexpr qsizetype kMostLetters = 100; // of a problem

QString textOf(const std::vector<ProblemPlace> &places)
{
    QString text;
    for (const ProblemPlace &place : places) {
        if (!text.isEmpty())
            text += text.endsWith(u':') ? QStringLiteral(" ") : QStringLiteral("; ");
        text += place.title % QStringLiteral(": ") % place.text.left(kMostLetters);
        if (!place.remark.isEmpty())
            text += QStringLiteral(" (") % place.remark % u')';
    }
    text = text.simplified();
    return text.size() > kMostLetters ? QString(text.left(kMostLetters) % u'\u2026') : text;
}

/// Contacts without a name count as duplicates of each other, and are most likely not.
bool isNameless(const Finding &finding)
{
    const PersonRecordPtr record = finding.person->record();
    return finding.condition == Condition::DuplicateContacts && !record->text(kABFirstNameProperty)
        && !record->text(kABLastNameProperty);
}

/// The dialog has asked already.
class Agreed : public AlertPanel
{
public:
    Answer runAlertPanel(const QString &, const QString &, const QString &, const QString &) override
    {
        return Answer::Default;
    }
};

FixReport repairAll(OutlineViewController &controller, const QList<PersonItemPtr> &findings, QWidget &window)
{
    window.setUpdatesEnabled(false); // or the list would be laid out again at each look
    const auto painting = qScopeGuard([&window] { window.setUpdatesEnabled(true); });
    Agreed agreed;
    FixAll repairs(controller, findings, agreed);
    QProgressDialog progress(
        FixAllDialog::tr("Repairing ..."), FixAllDialog::tr("Cancel"), 0, int(findings.size()), &window);
    progress.setWindowTitle(FixAllDialog::tr("Fix All"));
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(kMillisecondsToProgress);
    progress.setValue(0);
    FixReport report;
    QElapsedTimer turn;
    turn.start();
    while (!repairs.isAtEnd() && !progress.wasCanceled()) {
        const FixAll::Step step = repairs.next();
        report.count(step.end, step.outcome);
        if (turn.elapsed() < kMillisecondsOfTurn)
            continue;
        progress.setValue(int(repairs.done()));
        if (!progress.isVisible()) // what the user does in other windows comes afterwards
            QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        turn.restart();
    }
    report.left = findings.size() - repairs.done();
    return report;
}

} // namespace

FixAllDialog::FixAllDialog(QString option, QList<PersonItemPtr> findings, QWidget *parent)
    : QDialog(parent)
    , m_option(std::move(option))
    , m_findings(std::move(findings))
    , m_future(new QLabel(this))
    , m_list(new QTreeWidget(this))
{
    setWindowTitle(tr("Fix All"));
    m_future->setWordWrap(true);
    m_list->setAccessibleName(tr("Contacts to repair"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    fill();
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    m_ignore = buttons->addButton(QString(), QDialogButtonBox::ActionRole);
    connect(m_ignore, &QPushButton::clicked, this, [this] { done(kIgnored); });
    m_fix = buttons->addButton(QString(), QDialogButtonBox::AcceptRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_list, &QTreeWidget::itemChanged, this, &FixAllDialog::showCount);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_future);
    layout->addWidget(m_list, 1);
    layout->addWidget(buttons);
    m_fix->setDefault(true); // in the dialog by now, which would take Cancel
    showCount();
    setFirstSize(*this, kFirstSize);
}

void FixAllDialog::fill()
{
    QList<QTreeWidgetItem *> rows;
    for (const auto &finding : m_findings) {
        rows += new QTreeWidgetItem(QStringList(finding->name()));
        rows.back()->setCheckState(0, isNameless(finding->finding()) ? Qt::Unchecked : Qt::Checked);
    }
    m_list->setHeaderLabels({tr("Contact"), tr("Problem"), tr("Left behind by the repair")});
    m_list->addTopLevelItems(rows);
    m_list->setColumnHidden(kLost, true);
    if (!rows.isEmpty())
        m_list->setCurrentItem(rows.front());
    connect(&m_idle, &QTimer::timeout, this, &FixAllDialog::fillRows);
    connect(this, &QDialog::finished, &m_idle, &QTimer::stop);
    m_idle.start(0);
    fillRows();
    for (const int column : {0, kProblem}) {
        m_list->resizeColumnToContents(column);
        m_list->setColumnWidth(column, std::min(m_list->columnWidth(column), kFirstSize.width() / 3));
    }
}

/// Some at a time, as merges are tried out for it.
void FixAllDialog::fillRows()
{
    QElapsedTimer turn;
    turn.start();
    const QSignalBlocker blocker(m_list); // the ticks stay as they are
    for (; m_filled < m_findings.size() && turn.elapsed() < kMillisecondsOfTurn; ++m_filled) {
        const Finding &finding = m_findings[m_filled]->finding();
        QTreeWidgetItem *row = m_list->topLevelItem(int(m_filled));
        row->setText(kProblem, textOf(problemPlaces(finding)));
        row->setToolTip(kProblem, row->text(kProblem));
        const QString lost = linesOf(leftBehind(finding, m_option));
        if (lost.isEmpty())
            continue;
        row->setText(kLost, QString(lost).replace(u'\n', QStringLiteral("; ")));
        row->setToolTip(kLost, lost);
        m_list->setColumnHidden(kLost, false);
    }
    if (m_filled == m_findings.size())
        m_idle.stop();
}

QList<PersonItemPtr> FixAllDialog::chosen() const
{
    QList<PersonItemPtr> chosen;
    for (int row = 0; row < m_list->topLevelItemCount(); ++row) {
        if (m_list->topLevelItem(row)->checkState(0) == Qt::Checked)
            chosen += m_findings[row];
    }
    return chosen;
}

void FixAllDialog::showCount()
{
    QSet<QString> contacts;
    const QList<PersonItemPtr> findings = chosen();
    for (const auto &finding : findings)
        contacts.insert(finding->person()->uniqueId());
    m_future->setText(futureOfRepair(m_option, contacts.size()));
    m_fix->setText(tr("&Fix %1").arg(findings.size()));
    m_fix->setEnabled(!findings.isEmpty());
    const bool areSeveral = !m_findings.isEmpty() && isOfSeveral(m_findings.front()->finding().condition);
    m_ignore->setText((areSeveral ? tr("&Different People: %1") : tr("&Ignore %1")).arg(findings.size()));
    m_ignore->setEnabled(!findings.isEmpty());
}

QString fixAll(OutlineViewController &controller, const QList<PersonItemPtr> &findings, QWidget &window,
    const std::function<void(const QList<PersonItemPtr> &)> &ignore)
{
    const PersonItemPtr group = findings.front()->parentNode();
    const QString option = controller.currentOption(conditionGroup(group->finding().condition).optionGroup);
    const Job::Hold hold; // nothing changes the findings under the question or between two repairs
    FixAllDialog dialog(option, findings, &window);
    const int answer = dialog.exec();
    if (answer == FixAllDialog::kIgnored)
        ignore(dialog.chosen());
    if (answer != QDialog::Accepted)
        return {};
    controller.clearSelection();
    const FixReport report = repairAll(controller, dialog.chosen(), window);
    controller.moveOn(group);
    return pastOfRepair(option, report);
}
