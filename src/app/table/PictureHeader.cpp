// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/table/PictureHeader.h"

#include "app/look/CalmShapes.h"
#include "app/look/Colours.h"
#include "app/look/ContactPicture.h"

#include <QEvent>
#include <QPainter>
#include <QStyleOption>

namespace {

constexpr int kWidth = 52;
constexpr int kRowHeight = 40;
constexpr int kPictureSize = 26;
constexpr int kMargin = 12;
constexpr int kMostPictures = 1000;

} // namespace

PictureHeader::PictureHeader(PersonOfRow personOfRow, QWidget *parent)
    : QHeaderView(Qt::Vertical, parent), m_personOfRow(std::move(personOfRow)), m_pictures(kMostPictures)
{
    setSectionsClickable(true); // which selects the row
    setSectionResizeMode(Fixed);
    setHighlightSections(false);
    const int rowHeight = scaled(kRowHeight, parent->fontMetrics());
    setMinimumSectionSize(rowHeight); // or the margins of titles would make rows higher
    setDefaultSectionSize(rowHeight);
}

QSize PictureHeader::sizeHint() const
{
    return {scaled(kWidth, fontMetrics()), 0};
}

QPixmap PictureHeader::pictureOf(const ABPerson &person, int size, qreal devicePixelRatio) const
{
    const QByteArray picture = person.imageData().value_or(QByteArray());
    const QString key = QStringLiteral("%1 %2 %3").arg(person.uniqueId()).arg(qHash(picture)).arg(devicePixelRatio);
    if (const QPixmap *known = m_pictures.object(key))
        return *known;
    QPixmap made = personPicture(picture, size, devicePixelRatio, person.uniqueId());
    m_pictures.insert(key, new QPixmap(made));
    return made;
}

void PictureHeader::paintSection(QPainter *painter, const QRect &rect, int row) const
{
    QStyleOptionViewItem option;
    option.initFrom(this);
    option.state.setFlag(QStyle::State_MouseOver, false); // which is of the whole header
    option.state.setFlag(QStyle::State_Selected, selectionModel()->isRowSelected(row, {}));
    option.rect = rect;
    option.palette.setColor(QPalette::Highlight, colourFor(ColourRole::AccentSoft, option.palette));
    painter->save();
    painter->fillRect(rect, option.palette.color(QPalette::Base));
    drawRow(option, true, *painter);
    const int size = scaled(kPictureSize, fontMetrics());
    const QPoint at(rect.left() + scaled(kMargin, fontMetrics()), rect.top() + (rect.height() - size) / 2);
    if (const ABPersonPtr person = m_personOfRow(row))
        painter->drawPixmap(at, pictureOf(*person, size, devicePixelRatioF()));
    painter->restore();
}

void PictureHeader::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange)
        m_pictures.clear();
    QHeaderView::changeEvent(event);
}
