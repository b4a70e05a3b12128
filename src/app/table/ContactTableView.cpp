// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/table/ContactTableView.h"

#include "app/look/Controls.h"
#include "app/look/Counted.h"
#include "app/table/CellDelegate.h"
#include "app/table/CellMessage.h"
#include "app/table/ContactGrid.h"
#include "app/table/CopiedContacts.h"
#include "app/table/EmptyPage.h"
#include "app/table/PictureHeader.h"

#include <QApplication>
#include <QBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTableView>

#include <algorithm>

ContactTableView::ContactTableView(LoadContactsViewController &controller, QWidget *parent)
    : QWidget(parent)
    , m_controller(controller)
    , m_rows(*controller.getTableView())
    , m_search(new QLineEdit(this))
    , m_table(new ContactGrid([this](int column) { return isName(column); }, this))
    , m_emptyPage(new EmptyPage(this))
    , m_noMatch(new StatePage(QStringLiteral("emptySearch")))
    , m_clear(new QPushButton(tr("Clear")))
    , m_pages(new QStackedWidget(this))
    , m_refusal(new CellMessage(this))
    , m_look(*m_table, controller)
    , m_columnChoice(controller, this)
    , m_contextMenu(new QMenu(this))
{
    makeSearchField(*m_search, tr("Search contacts"));
    m_pages->addWidget(m_table);
    m_pages->addWidget(m_emptyPage);
    m_pages->addWidget(makeNoMatchPage());
    auto *layout = innerLayout<QVBoxLayout>(this, 8);
    layout->addWidget(m_pages, 1);

    setUpTable();
    setUpContextMenu();
    setUpHeader();
    setUpEditing();
    m_search->installEventFilter(this);
    m_table->installEventFilter(this);
    connect(m_search, &QLineEdit::textChanged, &m_rows, &FilteredRows::setFilterText);
    connect(&m_rows, &QAbstractItemModel::layoutChanged, this, &ContactTableView::updateSummary);
    connect(m_controller.getTableView(), &QAbstractItemModel::rowsRemoved, this, &ContactTableView::updateSummary);
    updateSummary();
}

QWidget *ContactTableView::makeNoMatchPage()
{
    m_clear->setAccessibleName(tr("Clear the search"));
    m_clear->setProperty(kPrimaryProperty, true);
    connect(m_clear, &QPushButton::clicked, m_search, &QLineEdit::clear);
    m_noMatch->addButton(m_clear);
    return m_noMatch;
}

bool ContactTableView::isName(int column) const
{
    const Field field = m_controller.getTableView()->fieldAt(column);
    return field == Field::FirstName || field == Field::LastName;
}

void ContactTableView::setUpTable()
{
    m_table->setAccessibleName(tr("Contacts"));
    m_table->setModel(&m_rows);
    connect(&m_rows, &QAbstractItemModel::layoutAboutToBeChanged, this, [this] {
        m_isCurrentSeen = m_table->viewport()->rect().intersects(m_table->visualRect(m_table->currentIndex()));
    });
    connect(&m_rows, &QAbstractItemModel::layoutChanged, this, [this] {
        if (m_isCurrentSeen && m_table->currentIndex().isValid())
            m_table->scrollTo(m_table->currentIndex()); // the user was working there
    });
    m_table->setTabKeyNavigation(false); // Tab leaves the table; arrows move in it
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setFrameShape(QFrame::NoFrame);
    m_table->setShowGrid(false);
    m_table->setWordWrap(false);
    m_table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_table->setCornerButtonEnabled(false);
    m_table->setVerticalHeader(new PictureHeader(
        [this](int row) {
            const int tableRow = m_rows.mapToSource(m_rows.index(row, 0)).row();
            return tableRow < 0 ? ABPersonPtr() : m_controller.getTableView()->rowAt(tableRow)->person();
        },
        m_table));
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        m_table->verticalHeader()->viewport()->update();
        updateSummary();
    });
    m_table->setContextMenuPolicy(Qt::CustomContextMenu);
}

void ContactTableView::setUpHeader()
{
    QHeaderView *header = m_table->horizontalHeader();
    header->setDefaultSectionSize(ContactTableModel::kColumnWidth);
    header->setSectionsMovable(true);
    header->setAutoScroll(false); // Qt 6.4 scrolls to the left wherever a title is dragged to
    header->setSectionsClickable(true);
    header->setHighlightSections(false);
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    connect(header, &QHeaderView::sectionMoved, this, [this](int, int from, int to) { columnDragged(from, to); });
    connect(header, &QHeaderView::sectionClicked, this, &ContactTableView::sortBy);
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QWidget::customContextMenuRequested, this, &ContactTableView::showHeaderMenu);
    m_look.follow(m_rows);
    connect(m_controller.getTableView(), &QAbstractItemModel::columnsInserted, this, [this] {
        m_table->doItemsLayout(); // new columns come at the right end
        m_table->horizontalScrollBar()->setValue(m_table->horizontalScrollBar()->maximum());
    });
}

void ContactTableView::showHeaderMenu(const QPoint &at)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (const int column = m_table->horizontalHeader()->logicalIndexAt(at); column >= 0) {
        const Field field = m_controller.getTableView()->fieldAt(column);
        menu->addAction(tr("Sort by This Column"), this, [this, column] { sortBy(column); });
        menu->addAction(
            tr("Hide This Column"), this, [this, field] { m_controller.getTableView()->hideColumn(field); });
        menu->addSeparator();
    }
    for (QMenu *columns : m_columnChoice.menus())
        menu->addMenu(columns);
    menu->popup(m_table->horizontalHeader()->mapToGlobal(at));
}

void ContactTableView::setUpEditing()
{
    const auto refusal = [this](const QModelIndex &cell, const QString &text) {
        const Field field = m_controller.getTableView()->fieldAt(cell.column());
        const auto value = LoadContactsViewController::valueFromText(text, field);
        return value ? QString() : value.error().text;
    };
    auto *delegate = new CellDelegate(m_table, refusal);
    m_table->setItemDelegate(delegate);
    m_table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    connect(delegate, &CellDelegate::editorOpened, this, [this](QWidget *editor) {
        m_controller.setEditing(true);
        // Queued, as this view may be going together with the editor; by then the next cell's may be open.
        const auto noteState = [this] { m_controller.setEditing(isEditing()); };
        connect(editor, &QObject::destroyed, this, noteState, Qt::QueuedConnection);
    });
    connect(m_refusal, &CellMessage::hidden, this, [this] { m_table->setAccessibleDescription({}); });
    // Queued: the key or click that a refusal comes from is over then, and the next one hides it.
    connect(delegate, &CellDelegate::refused, this, &ContactTableView::showRefusal, Qt::QueuedConnection);
    const auto showForSource = [this](const QModelIndex &cell, const QString &reason) {
        showRefusal(m_rows.mapFromSource(cell), reason);
    };
    connect(m_controller.getTableView(), &ContactTableModel::cellRefused, this, showForSource, Qt::QueuedConnection);
}

void ContactTableView::showRefusal(const QModelIndex &cell, const QString &reason)
{
    QRect place = m_table->visualRect(cell);
    place.moveTopLeft(m_table->viewport()->mapTo(this, place.topLeft()));
    m_refusal->show(reason, place);
    m_table->setAccessibleDescription(reason);
}

bool ContactTableView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto &key = *static_cast<QKeyEvent *>(event);
        if (watched == m_search && typedInSearchField(key))
            return true;
        if (watched == m_table && typedInTable(key))
            return true;
    }
    if (watched == m_table && m_table->hasFocus() && event->type() == QEvent::InputMethod) { // accents, other scripts
        m_search->setFocus();
        return QApplication::sendEvent(m_search, event);
    }
    return QWidget::eventFilter(watched, event);
}

bool ContactTableView::typedInSearchField(const QKeyEvent &key)
{
    if (key.modifiers().testAnyFlags(Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return false;
    switch (key.key()) {
    case Qt::Key_Escape:
        if (!m_search->text().isEmpty())
            m_search->clear();
        else if (QWidget *pane = mainPane())
            pane->setFocus();
        return true;
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (m_rows.rowCount() == 0)
            return true;
        if (!m_table->currentIndex().isValid())
            m_table->selectRow(0);
        m_table->setFocus();
        return true;
    default:
        return false;
    }
}

/// Letters go to the search field; editing a cell takes another key, so that nothing is overwritten unnoticed.
bool ContactTableView::typedInTable(const QKeyEvent &key)
{
    const bool isCommand = key.modifiers().testAnyFlags(Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (isCommand || !m_table->hasFocus()) // an editor passes on what it does not use
        return false;
    if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
        if (m_table->currentIndex().isValid())
            m_table->edit(m_table->currentIndex());
        return true;
    }
    const QString text = key.text();
    if (text.isEmpty() || text.front().isSpace() || !(text.front().isPrint() || text.front().isSurrogate()))
        return false;
    m_search->setFocus();
    m_search->end(false);
    m_search->insert(text);
    return true;
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
    add(tr("Open Contact Card"), QKeySequence(Qt::CTRL | Qt::Key_O), [this] {
        if (const QList<ABPersonPtr> people = selectedPeople(); !people.isEmpty())
            Q_EMIT cardRequested(people.front());
    });
    m_compareAction = add(tr("Compare and Merge ..."), QKeySequence(), [this] { compareSelected(); });
    add(tr("Copy"), QKeySequence::Copy, [this] { copyCellOrRows(*m_table); });
    add(tr("Copy Rows"), QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_C),
        [this] { copyCells(m_table->selectionModel()->selectedIndexes()); });
    add(tr("Copy Contacts as vCard"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C),
        [this] { copyAsCards(selectedPeople()); });
    m_contextMenu->addSeparator();
    add(tr("Export ..."), QKeySequence(), [this] { m_controller.exportItem(selectedRows()); });
    m_deleteAction = add(tr("Delete ..."), QKeySequence::Delete, [this] { deleteSelected(); });
    connect(
        &m_controller, &LoadContactsViewController::contextMenuEnabled, this, &ContactTableView::setContextMenuEnabled);
    connect(m_table, &QWidget::customContextMenuRequested, this, [this](const QPoint &at) {
        setContextMenuEnabled(!selectedRows().empty());
        m_contextMenu->popup(m_table->viewport()->mapToGlobal(at));
    });
    connect(m_contextMenu, &QMenu::aboutToHide, this, [this] { setContextMenuEnabled(true); });
}

void ContactTableView::setContextMenuEnabled(bool isEnabled)
{
    for (QAction *item : m_contextMenu->actions())
        item->setEnabled(isEnabled && (item != m_deleteAction || m_controller.getTableView()->isEditable())
            && (item != m_compareAction || canCompare()));
}

void ContactTableView::setEditable(bool isEditable)
{
    m_controller.getTableView()->setEditable(isEditable);
    setContextMenuEnabled(true);
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
    const Field field = m_controller.getTableView()->fieldAt(column);
    const auto &before = m_controller.sortDescriptors();
    const bool isReversed = !before.empty() && before.front() == SortDescriptor{field, Qt::AscendingOrder};
    const Qt::SortOrder order = isReversed ? Qt::DescendingOrder : Qt::AscendingOrder;
    const int scrolled = m_table->verticalScrollBar()->value();
    m_controller.sortDescriptorsDidChange({{field, order}});
    m_table->verticalScrollBar()->setValue(scrolled); // a sorted table is read from where it was, usually the top
    m_look.showSortArrow();
}

void ContactTableView::sortByCurrentColumn()
{
    if (m_table->currentIndex().isValid())
        sortBy(m_table->currentIndex().column());
}

void ContactTableView::moveCurrentColumn(int by)
{
    const int from = m_table->currentIndex().column();
    const int to = from + by;
    if (from < 0 || to < 0 || to >= m_rows.columnCount())
        return;
    m_controller.getTableView()->moveColumn(from, to);
    m_table->scrollTo(m_table->currentIndex());
}

void ContactTableView::updateSummary()
{
    const int all = m_controller.numberOfRowsInTableView();
    const int shown = m_rows.rowCount();
    const int selected = selectedRowCount();
    QString summary = shown == all ? counted(all, tr("contact"), tr("contacts")) : tr("%L1 of %L2").arg(shown).arg(all);
    if (selected > 0)
        summary += tr(" · %L1 selected").arg(selected);
    Q_EMIT summaryChanged(summary);
    m_noMatch->say(tr("No contact matches “%1”").arg(m_search->text()), {tr("All fields are searched.")});
    m_search->setPlaceholderText(
        all > 0 ? tr("Search %1").arg(counted(all, tr("contact"), tr("contacts"))) : tr("Search in all fields"));
    QWidget *page = all == 0 ? static_cast<QWidget *>(m_emptyPage)
        : shown == 0         ? m_noMatch
                             : static_cast<QWidget *>(m_table);
    if (page == m_pages->currentWidget())
        return;
    const bool wasFocused = m_pages->isAncestorOf(window()->focusWidget());
    m_pages->setCurrentWidget(page);
    if (wasFocused && mainPane())
        mainPane()->setFocus();
}

QWidget *ContactTableView::mainPane() const
{
    if (m_pages->currentWidget() == m_table)
        return m_table;
    if (m_pages->currentWidget() != m_emptyPage)
        return m_clear;
    return m_emptyPage->importButton()->isHidden() ? nullptr : m_emptyPage->importButton();
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
        people += m_controller.getTableView()->rowAt(row)->person();
    return people;
}

void ContactTableView::deleteSelected()
{
    m_controller.deleteItem(selectedRows());
    setContextMenuEnabled(true); // the shortcuts work again
}

int ContactTableView::selectedRowCount() const
{
    int rows = 0;
    for (const QItemSelectionRange &range : m_table->selectionModel()->selection()) // of whole rows
        rows += range.height();
    return rows;
}

void ContactTableView::compareSelected()
{
    if (canCompare())
        Q_EMIT comparisonRequested(selectedPeople());
}
