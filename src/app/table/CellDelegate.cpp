// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/table/CellDelegate.h"

#include "app/look/Colours.h"
#include "table/grid/ContactTableModel.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QToolTip>

#include <algorithm>
#include <array>
#include <limits>

CellDelegate::CellDelegate(QObject *parent, Refusal refusal)
    : QStyledItemDelegate(parent), m_refusal(std::move(refusal))
{ }

QWidget *CellDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QWidget *editor = QStyledItemDelegate::createEditor(parent, option, index);
    if (auto *line = qobject_cast<QLineEdit *>(editor))
        line->setMaxLength(std::numeric_limits<int>::max()); // what is beyond the usual limit would be cut off
    m_cell = index;
    Q_EMIT editorOpened(editor);
    return editor;
}

void CellDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    QStyledItemDelegate::setEditorData(editor, index);
    if (const auto *line = qobject_cast<QLineEdit *>(editor))
        m_opened = line->text();
}

void CellDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    const auto *line = qobject_cast<QLineEdit *>(editor);
    if (!line || line->text() != m_opened)
        QStyledItemDelegate::setModelData(editor, model, index);
}

bool CellDelegate::eventFilter(QObject *object, QEvent *event)
{
    auto *line = qobject_cast<QLineEdit *>(object);
    if (line && m_refusal && event->type() == QEvent::KeyPress && line->text() != m_opened) {
        constexpr std::array committing{Qt::Key_Return, Qt::Key_Enter, Qt::Key_Tab, Qt::Key_Backtab};
        const bool isCommitting =
            std::ranges::find(committing, static_cast<QKeyEvent *>(event)->key()) != committing.end();
        const QString reason = isCommitting ? m_refusal(m_cell, line->text()) : QString();
        if (!reason.isNull()) {
            line->setAccessibleDescription(reason);
            Q_EMIT refused(m_cell, reason);
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(object, event);
}

QString CellDelegate::displayText(const QVariant &value, const QLocale &locale) const
{
    constexpr qsizetype mostShown = 4000; // wider than any screen, and shaped for each frame
    return QStyledItemDelegate::displayText(value, locale).left(mostShown);
}

bool CellDelegate::helpEvent(
    QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option, const QModelIndex &index)
{
    constexpr qsizetype mostSaid = 600;
    const QString text = index.data().toString();
    const bool hasToolTip = index.data(Qt::ToolTipRole).isValid();
    if (event->type() != QEvent::ToolTip || hasToolTip || sizeHint(option, index).width() <= option.rect.width())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    // Not as rich text, whatever is in it.
    QToolTip::showText(
        event->globalPos(), QStringLiteral("<span>%1</span>").arg(text.left(mostSaid).toHtmlEscaped()), view);
    return true;
}

void CellDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.data(ContactTableModel::kIsDamagedRole).toBool())
        option->palette.setColor(QPalette::Text, colourFor(ColourRole::Quiet, option->palette));
}
