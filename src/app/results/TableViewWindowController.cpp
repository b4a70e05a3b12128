// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/TableViewWindowController.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListView>
#include <QMouseEvent>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

namespace {

/// The words belong to the check box beside them.
class CheckBoxRow : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    bool editorEvent(
        QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option, const QModelIndex &index) override
    {
        const bool isRelease = event->type() == QEvent::MouseButtonRelease;
        if (!isRelease || static_cast<QMouseEvent *>(event)->button() != Qt::LeftButton)
            return QStyledItemDelegate::editorEvent(event, model, option, index);
        return model->setData(index, {}, Qt::CheckStateRole);
    }
};

} // namespace

TableViewWindowController::TableViewWindowController(ConditionListModel &conditions, QWidget *parent)
    : QDialog(parent), m_conditions(conditions), m_list(new QListView(this))
{
    setWindowTitle(tr("Preferences"));
    m_list->setModel(&m_conditions);
    m_list->setItemDelegate(new CheckBoxRow(m_list));
    m_list->setAccessibleName(tr("Conditions to scan for"));
    m_list->setCurrentIndex(m_conditions.index(0));
    m_list->setMinimumHeight((m_list->sizeHintForRow(0) + 4) * m_conditions.rowCount() + 8);
    m_list->setMinimumWidth(m_list->sizeHintForColumn(0) + 40);
    auto *title = new QLabel(tr("Scans look for:"));
    title->setBuddy(m_list);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &TableViewWindowController::okClicked);
    connect(buttons, &QDialogButtonBox::rejected, this, &TableViewWindowController::cancelClicked);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(m_list, 1);
    layout->addWidget(buttons);
}

void TableViewWindowController::showWindow()
{
    show();
    raise();
    activateWindow();
    m_list->setFocus();
}
