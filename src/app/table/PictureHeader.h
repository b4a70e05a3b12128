// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"

#include <QCache>
#include <QHeaderView>
#include <QPixmap>

#include <functional>

/// The pictures of the contacts, at the left of their rows also while the table is scrolled.
class PictureHeader : public QHeaderView
{
    Q_OBJECT

public:
    using PersonOfRow = std::function<ABPersonPtr(int row)>;

    PictureHeader(PersonOfRow personOfRow, QWidget *parent);

    QSize sizeHint() const override;

protected:
    void paintSection(QPainter *painter, const QRect &rect, int row) const override;
    void changeEvent(QEvent *event) override;

private:
    QPixmap pictureOf(const ABPerson &person, int size, qreal devicePixelRatio) const;

    PersonOfRow m_personOfRow;
    mutable QCache<QString, QPixmap> m_pictures; // by uid and picture
};
