// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Job.h"
#include "contacts/stores/open/OpenStore.h"

#include <QMenu>

/// The available address books, looked up each time the menu opens.
class BookMenu : public QMenu
{
    Q_OBJECT

public:
    explicit BookMenu(QWidget *parent = nullptr);

    /// Checks the open one. Empty: the default one.
    void setCurrent(const QString &where) { m_current = where; }
    void setBooks(const std::vector<KnownBook> &books);

Q_SIGNALS:
    void chosen(const QString &where); ///< not the current one

private:
    QString m_current;
    Job m_finder;
};
