// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/EditMenu.h"

#include <QApplication>

#include <algorithm>

EditMenu::EditMenu(QWidget *parent)
    : QMenu(tr("&Edit"), parent)
    , m_undo(addAction(tr("&Undo"), this, &EditMenu::undoRequested))
    , m_redo(addAction(tr("&Redo"), this, &EditMenu::redoRequested))
{
    m_undo->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
    m_redo->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z));
    setUndoable(false, false);
    addSeparator();
    addForField(tr("Cu&t"), QKeySequence::Cut, "cut");
    addForField(tr("&Copy"), QKeySequence::Copy, "copy");
    addForField(tr("&Paste"), QKeySequence::Paste, "paste");
    addForField(tr("Select &All"), QKeySequence::SelectAll, "selectAll");
    addSeparator();
    addAction(tr("&Find"), this, &EditMenu::findRequested)->setShortcut(QKeySequence::Find);
}

void EditMenu::setUndoable(bool canUndo, bool canRedo)
{
    m_undo->setEnabled(canUndo);
    m_redo->setEnabled(canRedo);
}

/// An action of the focused widget with these keys, or else its slot of this name.
void EditMenu::addForField(const QString &title, const QKeySequence &keys, const char *slot)
{
    const auto ownAction = [keys] {
        const QWidget *field = QApplication::focusWidget();
        const QList<QAction *> actions = field ? field->actions() : QList<QAction *>();
        const auto own = std::ranges::find(actions, keys, &QAction::shortcut);
        return own == actions.end() ? nullptr : *own;
    };
    QAction *action = addAction(title, this, [ownAction, slot] {
        if (QAction *own = ownAction())
            own->trigger();
        else
            QMetaObject::invokeMethod(QApplication::focusWidget(), slot);
    });
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetShortcut); // to be read here: fields know the keys themselves
    connect(this, &QMenu::aboutToShow, action, [action, ownAction, slot] {
        const QWidget *field = QApplication::focusWidget();
        const QByteArray method = QByteArray(slot) + "()";
        action->setEnabled(ownAction() || (field && field->metaObject()->indexOfSlot(method) >= 0));
    });
}
