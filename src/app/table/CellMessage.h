// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>

/// A message just below a cell until the next key or click. A tool tip would disappear immediately when the focus
/// changes as the editor closes.
class CellMessage : public QLabel
{
    Q_OBJECT

public:
    /// Hidden at first.
    explicit CellMessage(QWidget *parent);

    /// @p cell is in the parent's coordinates. The message is above the cell if there is no room below.
    void show(const QString &text, const QRect &cell);

Q_SIGNALS:
    void hidden();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
