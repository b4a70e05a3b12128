// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Job.h"
#include "contacts/stores/open/OpenStore.h"

#include <QMenu>

/// The address books that there are, looked for whenever the menu opens.
class BookMenu : public QMenu
{
    Q_OBJECT

public:
    explicit BookMenu(QWidget *parent = nullptr);

    /// Which one is open; it is checked. Empty: the user's own.
    void setCurrent(const QString &where) { m_current = where; }
    void setBooks(const std::vector<KnownBook> &books);

Q_SIGNALS:
    void chosen(const QString &where); ///< another than the current one

private:
    QString m_current;
    Job m_finder;
};
