// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/table/CopiedContacts.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <algorithm>

namespace {

/// As spreadsheets quote what they copy, so that a value stays in its cell.
QString inOneCell(QString value)
{
    const bool isPlain = std::ranges::none_of(
        value, [](QChar character) { return character == u'\t' || character == u'\n' || character == u'\r'; });
    if (isPlain && !value.startsWith(u'"'))
        return value;
    return u'"' % value.replace(u'"', QStringLiteral("\"\"")) % u'"';
}

} // namespace

void copyCells(QModelIndexList cells)
{
    std::sort(cells.begin(), cells.end());
    QString text;
    for (int i = 0; i < cells.size(); ++i) {
        if (i > 0)
            text += cells[i].row() == cells[i - 1].row() ? u'\t' : u'\n';
        text += inOneCell(cells[i].data(Qt::EditRole).toString());
    }
    QGuiApplication::clipboard()->setText(text);
}

void copyCellOrRows(const QAbstractItemView &view)
{
    if (view.selectionModel()->selectedRows().size() > 1)
        copyCells(view.selectionModel()->selectedIndexes());
    else if (view.currentIndex().isValid())
        QGuiApplication::clipboard()->setText(view.currentIndex().data(Qt::EditRole).toString());
}

void copyAsCards(const QList<ABPersonPtr> &people)
{
    QByteArray cards;
    for (const ABPersonPtr &person : people)
        cards += person->vCardRepresentation();
    auto *content = new QMimeData;
    content->setText(QString::fromUtf8(cards));
    content->setData(QStringLiteral("text/vcard"), cards);
    QGuiApplication::clipboard()->setMimeData(content);
}
