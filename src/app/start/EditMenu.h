// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMenu>

/// The usual entries. Cut, Copy, Paste and Select All are for whatever has the focus.
class EditMenu : public QMenu
{
    Q_OBJECT

public:
    explicit EditMenu(QWidget *parent);

    void setUndoable(bool canUndo, bool canRedo);

Q_SIGNALS:
    void undoRequested();
    void redoRequested();
    void findRequested();

private:
    void addForField(const QString &title, const QKeySequence &keys, const char *slot);

    QAction *m_undo;
    QAction *m_redo;
};
