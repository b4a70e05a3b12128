// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ContactTableView.h"

#include "app/Counted.h"
#include "table/ColumnMenus.h"

#include <QApplication>
#include <QBoxLayout>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>
#include <QTableView>
#include <QToolTip>

#include <algorithm>
#include <set>

ContactTableView::ContactTableView(LoadContactsViewController &controller, QWidget *parent)
    : QWidget(parent)
    , m_controller(controller)
    , m_rows(*controller.getTableView())
    , m_search(new QLineEdit(this))
    , m_summary(new QLabel(this))
    , m_table(new QTableView(this))
    , m_emptyPage(new QWidget(this))
    , m_pages(new QStackedWidget(this))
    , m_place(*m_table, m_rows, *controller.getTableView())
    , m_contextMenu(new QMenu(this))
{
    m_search->setPlaceholderText(tr("Search in all fields"));
    m_search->setAccessibleName(tr("Search contacts"));
    m_search->setClearButtonEnabled(true);
    auto *top = new QHBoxLayout;
    top->addWidget(m_search, 1);
    top->addWidget(m_summary);
    m_pages->addWidget(m_table);
    m_pages->addWidget(m_emptyPage);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_pages, 1);

    setUpTable();
    setUpColumnMenus();
    setUpContextMenu();
    setUpEmptyPage();
    connect(m_search, &QLineEdit::textChanged, &m_rows, &FilteredRows::setFilterText);
    connect(&m_rows, &QAbstractItemModel::modelReset, this, &ContactTableView::updateSummary);
    updateSummary();
}

void ContactTableView::setUpTable()
{
    m_table->setAccessibleName(tr("Contacts"));
    m_table->setModel(&m_rows);
    connect(&m_rows, &QAbstractItemModel::modelAboutToBeReset, this, [this] { m_place.remember(); });
    connect(&m_rows, &QAbstractItemModel::modelReset, this, [this] { m_place.restore(); });
    connect(m_table->itemDelegate(), &QAbstractItemDelegate::closeEditor, this, &ContactTableView::editingEnded,
        Qt::QueuedConnection); // the editor is still there
    m_table->setTabKeyNavigation(false); // Tab leaves the table; arrows move in it
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setAlternatingRowColors(true);
    m_table->setShowGrid(false);
    m_table->setWordWrap(false);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 12);
    m_table->setContextMenuPolicy(Qt::CustomContextMenu);
    QHeaderView *header = m_table->horizontalHeader();
    header->setDefaultSectionSize(ContactTableModel::kColumnWidth);
    header->setSectionsMovable(true);
    header->setSectionsClickable(true);
    header->setHighlightSections(false);
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    connect(header, &QHeaderView::sectionMoved, this, [this](int, int from, int to) { columnDragged(from, to); });
    connect(header, &QHeaderView::sectionClicked, this, &ContactTableView::sortBy);
    connect(m_controller.getTableView(), &ContactTableModel::cellRefused, this, [this](const QString &reason) {
        QToolTip::showText(m_table->viewport()->mapToGlobal(m_table->visualRect(m_table->currentIndex()).bottomLeft()),
            reason, m_table);
    });
}

void ContactTableView::setUpColumnMenus()
{
    for (const ColumnMenu &menu : allMenusArray()) {
        auto *items = new QMenu(menu.title, this);
        items->setObjectName(menu.name);
        for (const Field field : menu.fields) {
            const QString title = fieldInfo(field).label;
            QAction *item = items->addAction(title);
            item->setCheckable(true);
            item->setChecked(m_controller.isColumnShown(field));
            connect(item, &QAction::triggered, this, [this, title] { m_controller.menuDidChange(title); });
        }
        m_columnMenus += items;
    }
    for (const auto change : {&QAbstractItemModel::columnsInserted, &QAbstractItemModel::columnsRemoved})
        connect(m_controller.getTableView(), change, this, &ContactTableView::followColumns);
    connect(m_controller.getTableView(), &QAbstractItemModel::modelReset, this, &ContactTableView::followColumns);
}

void ContactTableView::followColumns()
{
    for (const QMenu *menu : std::as_const(m_columnMenus)) {
        for (QAction *item : menu->actions())
            item->setChecked(m_controller.isColumnShown(*fieldLabelled(item->text())));
    }
}

void ContactTableView::setUpContextMenu()
{
    const auto add = [this](const QString &title, const QKeySequence &keys, auto action) {
        QAction *item = m_contextMenu->addAction(title, this, action);
        item->setShortcut(keys);
        item->setShortcutContext(Qt::WidgetShortcut);
        m_table->addAction(item);
        return item;
    };
    add(tr("Open Contact Card"), QKeySequence(Qt::CTRL | Qt::Key_O), [this] { openCard(); });
    add(tr("Copy Cells"), QKeySequence::Copy, [this] { copySelectedCells(); });
    add(tr("Copy Contacts as vCard"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C), [this] { copyAsCards(); });
    m_contextMenu->addSeparator();
    add(tr("Export ..."), QKeySequence(), [this] { m_controller.exportItem(selectedRows()); });
    add(tr("Delete ..."), QKeySequence::Delete, [this] { m_controller.deleteItem(selectedRows()); });
    connect(&m_controller, &LoadContactsViewController::contextMenuEnabled, m_contextMenu, [this](bool isEnabled) {
        for (QAction *item : m_contextMenu->actions())
            item->setEnabled(isEnabled);
    });
    connect(m_table, &QWidget::customContextMenuRequested, this, [this](const QPoint &at) {
        for (QAction *item : m_contextMenu->actions())
            item->setEnabled(!selectedRows().empty());
        m_contextMenu->popup(m_table->viewport()->mapToGlobal(at));
    });
    connect(m_contextMenu, &QMenu::aboutToHide, this, [this] {
        for (QAction *item : m_contextMenu->actions()) // the shortcuts work again
            item->setEnabled(true);
    });
}

void ContactTableView::setUpEmptyPage()
{
    auto *text = new QLabel(tr("<h3>No contacts yet</h3><p>Import your contacts from vCard files, or drop such files "
                               "onto this window.</p><p>To look around first, open the sample contacts.</p>"));
    text->setAlignment(Qt::AlignCenter);
    text->setWordWrap(true);
    auto *import = new QPushButton(tr("Import ..."));
    auto *sample = new QPushButton(tr("Open the Sample"));
    connect(import, &QPushButton::clicked, this, &ContactTableView::importRequested);
    connect(sample, &QPushButton::clicked, this, &ContactTableView::sampleRequested);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(import);
    buttons->addWidget(sample);
    buttons->addStretch();
    auto *layout = new QVBoxLayout(m_emptyPage);
    layout->addStretch();
    layout->addWidget(text);
    layout->addLayout(buttons);
    layout->addStretch();
}

void ContactTableView::columnDragged(int from, int to)
{
    // The model takes the new order over, and the view goes back to showing the model's order.
    {
        const QSignalBlocker blocker(m_table->horizontalHeader());
        m_table->horizontalHeader()->moveSection(to, from);
    }
    m_controller.getTableView()->moveColumn(from, to);
}

void ContactTableView::sortBy(int column)
{
    const Field field = m_controller.getTableView()->columns()[std::size_t(column)];
    const auto &before = m_controller.sortDescriptors();
    const bool isReversed = !before.empty() && before.front() == SortDescriptor{field, Qt::AscendingOrder};
    const Qt::SortOrder order = isReversed ? Qt::DescendingOrder : Qt::AscendingOrder;
    m_controller.sortDescriptorsDidChange({{field, order}});
    m_table->horizontalHeader()->setSortIndicatorShown(true);
    m_table->horizontalHeader()->setSortIndicator(column, order);
}

void ContactTableView::updateSummary()
{
    const int all = m_controller.numberOfRowsInTableView();
    const int shown = m_rows.rowCount();
    m_summary->setText(
        shown == all ? counted(all, tr("contact"), tr("contacts")) : tr("%L1 of %L2").arg(shown).arg(all));
    m_pages->setCurrentWidget(all == 0 ? m_emptyPage : m_table);
}

bool ContactTableView::isEditing() const
{
    const auto widgets = m_table->viewport()->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    return std::ranges::any_of(widgets, &QWidget::isVisible);
}

std::vector<int> ContactTableView::selectedRows() const
{
    std::vector<int> rows;
    const QModelIndexList selected = m_table->selectionModel()->selectedRows();
    for (const QModelIndex &index : selected)
        rows.push_back(m_rows.mapToSource(index).row());
    std::ranges::sort(rows);
    return rows;
}

QList<ABPersonPtr> ContactTableView::selectedPeople() const
{
    QList<ABPersonPtr> people;
    for (const int row : selectedRows())
        people += m_controller.getTableViewDataArray()[std::size_t(row)]->person();
    return people;
}

void ContactTableView::copySelectedCells()
{
    QModelIndexList cells = m_table->selectionModel()->selectedIndexes();
    std::sort(cells.begin(), cells.end());
    QString text;
    for (int i = 0; i < cells.size(); ++i) {
        if (i > 0)
            text += cells[i].row() == cells[i - 1].row() ? u'\t' : u'\n';
        text += cells[i].data(Qt::EditRole).toString();
    }
    QApplication::clipboard()->setText(text);
}

void ContactTableView::copyAsCards()
{
    QByteArray cards;
    for (const ABPersonPtr &person : selectedPeople())
        cards += person->vCardRepresentation();
    auto *content = new QMimeData;
    content->setText(QString::fromUtf8(cards));
    content->setData(QStringLiteral("text/vcard"), cards);
    QApplication::clipboard()->setMimeData(content);
}

void ContactTableView::openCard()
{
    const QList<ABPersonPtr> people = selectedPeople();
    if (!people.isEmpty())
        Q_EMIT cardRequested(people.front());
}
