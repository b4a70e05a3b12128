// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/BookMenu.h"

BookMenu::BookMenu(QWidget *parent) : QMenu(tr("&Address Books"), parent)
{
    connect(this, &QMenu::aboutToShow, this, [this] {
        if (isEmpty())
            addAction(tr("Looking ..."))->setEnabled(false);
        m_finder.restart(&knownBooks, [this](const std::vector<KnownBook> &books) { setBooks(books); });
    });
}

void BookMenu::setBooks(const std::vector<KnownBook> &books)
{
    clear();
    for (const KnownBook &book : books) {
        QAction *item = addAction(QString(book.name).replace(u'&', QStringLiteral("&&")));
        item->setCheckable(true);
        item->setChecked(m_current.isEmpty() ? book.isDefault : book.where == m_current);
        connect(item, &QAction::triggered, this, [this, where = book.where, item, isCurrent = item->isChecked()] {
            item->setChecked(isCurrent); // the other one gets its own window
            if (!isCurrent)
                Q_EMIT chosen(where);
        });
    }
}
