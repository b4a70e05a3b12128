// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/compare/CompareWindow.h"

#include "app/compare/CompareText.h"
#include "app/look/Controls.h"
#include "app/look/Counted.h"
#include "app/look/Strip.h"
#include "contacts/model/NameTexts.h"
#include "contacts/model/RecordDifferences.h"
#include "fix/MergeContacts.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>

namespace {

constexpr QSize kFirstSize(1240, 780);
constexpr int kPictureSize = 40;
constexpr int kHeadPictureSize = 44;

} // namespace

CompareWindow::CompareWindow(const QList<ABPersonPtr> &people, QWidget *parent)
    : QDialog(parent)
    , m_people(people)
    , m_choices(recordsOf(people))
    , m_grid(new StickyGrid(this))
    , m_keep(new QPushButton(tr("&Keep Everything"), this))
    , m_repair(new QPushButton(tr("&As the Repair Does"), this))
    , m_toNote(new QCheckBox(tr("Put values that are not chosen into the &note"), this))
    , m_different(new QPushButton(tr("These Are &Different People"), this))
    , m_merge(new QPushButton(this))
    , m_cancel(new QPushButton(tr("Cancel"), this))
    , m_summary(new ElidedLabel(this))
    , m_message(new Strip(Strip::Kind::Problem, this))
{
    setWindowTitle(tr("Compare and Merge"));
    setFirstSize(*this, kFirstSize);
    auto *layout = innerLayout<QVBoxLayout>(this);
    layout->addWidget(makeHead());
    layout->addWidget(m_grid, 1);
    layout->addWidget(separator(Qt::Horizontal));
    layout->addWidget(makeFoot());
    setUpHeads();
    showRows();
    includeBox(0)->setFocus();
}

/// Who is compared, and two ways to choose for all rows at once.
QWidget *CompareWindow::makeHead()
{
    const auto &records = m_choices.records();
    const auto withPicture = std::ranges::find_if(records, [](const auto &record) { return record->imageData(); });
    const PersonRecordPtr &shown = withPicture == records.end() ? records.front() : *withPicture;
    auto *picture = new QLabel;
    picture->setPixmap(recordPicture(*shown, kHeadPictureSize, devicePixelRatioF(), m_people.front()->uniqueId()));
    auto *title = new QLabel(tr("Compare and Merge"));
    makeHeadline(title);
    auto *sentence = new WrappedText(Qt::LeftToRight);
    sentence->setText(tr("%1. Everything is kept unless you untick it; the change can be taken back at any time.")
                          .arg(titleOf(records)));
    setTextColour(sentence, ColourRole::Quiet);
    m_keep->setToolTip(tr("Ticks every value, including those that differ only in how they are written."));
    connect(m_keep, &QPushButton::clicked, this, &CompareWindow::keepEverything);
    m_repair->setToolTip(tr("Shows what the repair \"Merge contacts\" gives."));
    m_repair->setCheckable(true);
    connect(m_repair, &QPushButton::clicked, this, &CompareWindow::showRepair);
    auto *texts = new QVBoxLayout;
    texts->setSpacing(4);
    texts->addWidget(title);
    texts->addWidget(sentence);
    auto *head = new QWidget;
    auto *layout = new QHBoxLayout(head);
    layout->setContentsMargins(20, 16, 20, 16);
    layout->setSpacing(12);
    layout->addWidget(picture);
    layout->addLayout(texts, 1);
    layout->addWidget(m_keep);
    layout->addWidget(m_repair);
    return head;
}

QWidget *CompareWindow::makeFoot()
{
    m_message->hide();
    m_merge->setIcon(symbol(QStringLiteral("system-users"), ColourRole::OnAccent));
    m_merge->setDefault(true);
    connect(m_toNote, &QCheckBox::clicked, this, [this](bool goThere) {
        m_choices.setOthersToNote(goThere);
        showChoices();
    });
    m_different->setToolTip(tr("Remember this: they are no longer shown as duplicates"));
    connect(m_different, &QPushButton::clicked, this, &CompareWindow::rememberDifferent);
    connect(m_merge, &QPushButton::clicked, this, &CompareWindow::merge);
    connect(m_cancel, &QPushButton::clicked, this, &CompareWindow::reject);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(m_toNote, 1);
    buttons->addWidget(m_different);
    buttons->addWidget(m_cancel);
    buttons->addWidget(m_merge);
    auto *foot = new QWidget;
    auto *layout = new QVBoxLayout(foot);
    layout->setContentsMargins(16, 12, 16, 12);
    layout->addWidget(m_message);
    layout->addWidget(m_summary);
    layout->addLayout(buttons);
    return foot;
}

void CompareWindow::setUpHeads()
{
    m_heads.title = new GridCell;
    m_heads.result = new GridCell(nullptr, GridCell::Weight::Bold);
    m_heads.result->setText(tr("Result"));
    for (std::size_t contact = 0; contact < m_choices.records().size(); ++contact) {
        auto *box = new QCheckBox;
        box->setAccessibleName(tr("Merge contact %1, %2").arg(contact + 1).arg(nameOf(*m_choices.records()[contact])));
        connect(box, &QCheckBox::clicked, this, [this, contact](bool isIncluded) {
            m_choices.setIncluded(contact, isIncluded);
            if (m_repaired)
                showRepair(true); // made of other contacts now
            else
                showChoices();
        });
        m_heads.cells.push_back(new GridCell(box, GridCell::Weight::Bold));
    }
    m_grid->setHeads(m_heads);
}

/// The rows of the comparison, the note last, as what is not chosen goes there.
void CompareWindow::showRows()
{
    m_rows.clear();
    std::optional<std::size_t> note;
    for (std::size_t row = 0; row < shown().rows().size(); ++row) {
        if (shown().rows()[row].property == kABNoteProperty)
            note = row;
        else if (!isEmpty(shown().rows()[row]))
            addRow(row);
    }
    if (note)
        addRow(*note);
    std::vector<StickyGrid::Row> widgets;
    for (const ShownRow &row : m_rows)
        widgets.push_back(row.widgets);
    m_grid->setRows(std::move(widgets));
    QWidgetList order{m_repair};
    for (const GridCell *head : m_heads.cells)
        order += head->button();
    for (const ShownRow &row : m_rows) {
        for (const GridCell *cell : row.widgets.cells) {
            if (cell)
                order += cell->button();
        }
    }
    order += {m_toNote, m_different, m_cancel, m_merge};
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
    showChoices();
}

void CompareWindow::addRow(std::size_t index)
{
    const Comparison::Row &row = shown().rows()[index];
    ShownRow added{index, {new GridCell(nullptr, GridCell::Weight::Quiet), {}, new GridCell}};
    added.widgets.title->setText(titleOf(row));
    QButtonGroup *group = row.isSingle ? new QButtonGroup(added.widgets.title) : nullptr;
    for (std::size_t contact = 0; contact < m_choices.records().size(); ++contact) {
        GridCell *cell = nullptr;
        if (!row.cells[contact].text.isNull()) {
            cell = new GridCell(makeButton(index, contact));
            if (group)
                group->addButton(cell->button());
            if (!row.property)
                cell->setPicture(recordPicture(*m_choices.records()[contact], kPictureSize, devicePixelRatioF()));
        }
        added.widgets.cells.push_back(cell);
    }
    m_rows.push_back(std::move(added));
}

QAbstractButton *CompareWindow::makeButton(std::size_t index, std::size_t contact)
{
    const Comparison::Row &row = shown().rows()[index];
    auto *button = row.isSingle ? static_cast<QAbstractButton *>(new QRadioButton) : new QCheckBox;
    button->setAccessibleName(
        tr("%1: %2, contact %3").arg(titleOf(row), shownText(row, row.cells[contact]), QString::number(contact + 1)));
    connect(button, &QAbstractButton::clicked, this, [this, index, contact](bool isChosen) {
        m_choices.setChosen(index, contact, isChosen);
        showChoices();
    });
    return button;
}

/// Everything that depends on what is ticked.
void CompareWindow::showChoices()
{
    m_result = m_repaired ? *m_repaired->records().back() : m_choices.result();
    const std::vector<std::size_t> included = m_choices.included();
    for (std::size_t contact = 0; contact < m_choices.records().size(); ++contact) {
        GridCell *head = m_heads.cells[contact];
        const bool isIncluded = m_choices.isIncluded(contact);
        head->button()->setChecked(isIncluded);
        head->setText(nameOf(*m_choices.records()[contact]),
            !isIncluded                       ? tr("left out, stays as it is")
                : contact == included.front() ? tr("the others are merged into this contact")
                                              : tr("is merged and removed"));
    }
    for (const ShownRow &row : m_rows)
        showRow(row);
    m_toNote->setChecked(!m_repaired && m_choices.othersToNote());
    m_toNote->setEnabled(!m_repaired);
    m_repair->setChecked(m_repaired.has_value());
    m_grid->arrange();
    showSummary();
}

void CompareWindow::showRow(const ShownRow &row)
{
    const Comparison::Row &values = shown().rows()[row.index];
    const QString result = resultText(values);
    row.widgets.result->setText(result);
    if (!values.property)
        row.widgets.result->setPicture(
            m_result.imageData() ? recordPicture(m_result, kPictureSize, devicePixelRatioF()) : QPixmap());
    const auto resultRecord = std::make_shared<const PersonRecord>(m_result);
    for (std::size_t contact = 0; contact < m_choices.records().size(); ++contact) {
        GridCell *cell = row.widgets.cells[contact];
        if (!cell)
            continue;
        const bool isTaken = m_repaired ? m_choices.isIncluded(contact)
                && !isLost(values, contact, lostValues({m_choices.records()[contact]}, {resultRecord}))
                                        : m_choices.isTaken(values, contact);
        QButtonGroup *group = cell->button()->group();
        if (group)
            group->setExclusive(false); // or the one that is chosen cannot be unticked
        cell->button()->setChecked(isTaken);
        if (group)
            group->setExclusive(!m_repaired);
        cell->setEnabled(m_choices.isIncluded(contact));
        cell->button()->setEnabled(!m_repaired);
        cell->button()->setAccessibleDescription(tr("Result: %1").arg(result.isEmpty() ? tr("nothing") : result));
        const QString text = values.property ? shownText(values, values.cells[contact]) : QString();
        cell->setText(text, quietLine(values, contact, isTaken));
    }
}

/// What becomes of a value that is not ticked, or that says the same as another one.
QString CompareWindow::quietLine(const Comparison::Row &row, std::size_t contact, bool isTaken) const
{
    const Comparison::Cell &cell = row.cells[contact];
    if (!m_choices.isIncluded(contact))
        return {};
    if (m_repaired)
        return isTaken ? QString() : tr("left behind");
    if (cell.fuller)
        return sameText(row);
    if (isTaken || cell.text.isEmpty())
        return {};
    if (!row.property)
        return tr("stays in the history only");
    const bool isInField = valueText(m_result.value(*row.property)) == cell.text;
    return !row.isSingle || isInField ? QString()
        : m_choices.othersToNote()    ? tr("goes to the note")
                                      : tr("left behind");
}

QString CompareWindow::resultText(const Comparison::Row &row) const
{
    if (!row.property)
        return {};
    if (m_repaired)
        return shownText(row, row.cells.back());
    if (row.property == kABNoteProperty)
        return textOrNull(m_result, kABNoteProperty);
    QStringList texts;
    for (std::size_t contact = 0; contact < row.cells.size(); ++contact) {
        const QString text = shownText(row, row.cells[contact]);
        if (m_choices.isTaken(row, contact) && !texts.contains(text))
            texts += text;
    }
    return texts.join(QLatin1Char('\n'));
}

void CompareWindow::showSummary()
{
    std::vector<PersonRecordPtr> records;
    for (const std::size_t contact : m_choices.included())
        records.push_back(m_choices.records()[contact]);
    const auto count = qsizetype(records.size());
    m_merge->setText(tr("&Merge %1").arg(counted(count, tr("Contact"), tr("Contacts"))));
    m_merge->setEnabled(count > 1 && !ABAddressBook::isSharedReadOnly());
    m_different->setEnabled(m_merge->isEnabled());
    m_summary->setToolTip({});
    if (count < 2) {
        m_summary->setText(tr("Tick two contacts or more to merge them."));
        return;
    }
    const MergeSummary summary = summaryOf(records, m_result);
    m_summary->setText(summary.text);
    m_summary->setToolTip(summary.leftBehind.join(QLatin1Char('\n')));
    m_summary->setAccessibleDescription(summary.leftBehind.join(QStringLiteral("; ")));
}

void CompareWindow::keepEverything()
{
    m_choices.keepEverything();
    showRepair(false);
}

void CompareWindow::showRepair(bool isShown)
{
    m_repaired.reset();
    if (isShown) {
        std::vector<PersonRecordPtr> records = m_choices.records();
        records.push_back(mergeContacts(includedPeople())->record());
        m_repaired.emplace(std::move(records));
    }
    showRows();
}

void CompareWindow::merge()
{
    const auto book = ABAddressBook::sharedAddressBook();
    if (!m_merge->isEnabled() || !book)
        return;
    std::vector<StoredRecord> people;
    for (const std::size_t contact : m_choices.included())
        people.push_back({m_people[qsizetype(contact)]->uniqueId(), m_choices.records()[contact]});
    const QStringList uids = uidsOf(includedPeople());
    setEnabled(false);
    m_merger.start([book, people, result = m_result] { return mergeInto(*book, people, result); },
        [this, uids](const Result<void> &done) { finish(done, uids); });
}

QList<ABPersonPtr> CompareWindow::includedPeople() const
{
    QList<ABPersonPtr> people;
    for (const std::size_t contact : m_choices.included())
        people += m_people[qsizetype(contact)];
    return people;
}

void CompareWindow::rememberDifferent()
{
    Q_EMIT differentPeople(uidsOf(includedPeople()));
    accept();
}

void CompareWindow::finish(const Result<void> &done, const QStringList &uids)
{
    setEnabled(true);
    if (done) {
        Q_EMIT merged(uids);
        accept();
        return;
    }
    m_message->setText(tr("Nothing was merged: %1").arg(done.error().description()));
    m_message->show();
    m_merge->setFocus();
    Q_EMIT failed(m_message->text());
}

void CompareWindow::reject()
{
    if (isEnabled())
        QDialog::reject();
}

QString CompareWindow::summary() const
{
    return m_summary->text();
}

QString CompareWindow::message() const
{
    return m_message->text();
}
