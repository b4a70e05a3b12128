// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/FindingDelegate.h"

#include "app/look/CalmShapes.h"
#include "app/look/Colours.h"
#include "app/look/ContactPicture.h"
#include "results/ResultTree.h"

#include <QApplication>
#include <QLocale>
#include <QPainter>

namespace {

constexpr int kGroupHeight = 36;
constexpr int kFindingHeight = 52;
constexpr int kPictureSize = 36;
constexpr int kMargin = 8;
constexpr int kGap = 12;

/// A name may hold line breaks; the row has one line for it.
QString lineOf(const QModelIndex &finding)
{
    QString text = finding.data().toString();
    for (QChar &c : text) {
        if (c == u'\n' || c == u'\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = u' ';
    }
    return finding.data(ResultTree::IsGoneRole).toBool() ? text % QStringLiteral(" – ") % kNoLongerThere : text;
}

} // namespace

QSize FindingDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const bool isGroup = !index.parent().isValid();
    return {200, scaled(isGroup ? kGroupHeight : kFindingHeight, option.fontMetrics)};
}

const QPixmap &FindingDelegate::pictureOf(
    const QModelIndex &index, int size, qreal devicePixelRatio, const QPalette &palette) const
{
    const QString uid = index.data(ResultTree::UidRole).toString();
    // Heads have colours of the palette.
    const QString key = uid + QStringLiteral(" %1 %2").arg(qRound(size * devicePixelRatio)).arg(palette.cacheKey());
    if (!m_pictures.contains(key)) {
        const QByteArray picture = index.data(ResultTree::PictureRole).toByteArray();
        m_pictures.insert(key, new QPixmap(personPicture(picture, size, devicePixelRatio, uid)));
    }
    return *m_pictures.object(key);
}

void FindingDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    item.text.clear();
    QApplication::style()->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
    if (index.data(ResultTree::IsGroupRole).toBool()) {
        const QRect badge = drawBadge(item, QLocale().toString(index.model()->rowCount(index)), *painter);
        item.font.setWeight(QFont::DemiBold);
        const QRect title = item.rect.adjusted(kMargin, 0, badge.left() - item.rect.right() - kMargin, 0);
        painter->save();
        painter->setFont(item.font);
        painter->setPen(item.palette.color(QPalette::Text));
        painter->drawText(title, Qt::AlignLeft | Qt::AlignVCenter,
            QFontMetrics(item.font).elidedText(index.data().toString(), Qt::ElideRight, title.width()));
        painter->restore();
        return;
    }
    if (index.data(ResultTree::IsGoneRole).toBool())
        item.palette.setColor(QPalette::Text, colourFor(ColourRole::Quiet, item.palette));
    const int size = scaled(kPictureSize, item.fontMetrics);
    const QRect row = item.rect.adjusted(kMargin, 0, -kGap, 0);
    painter->drawPixmap(row.left(), row.top() + (row.height() - size) / 2,
        pictureOf(index, size, painter->device()->devicePixelRatioF(), item.palette));
    drawTwoLines(item, row.adjusted(size + kGap, 0, 0, 0), lineOf(index),
        index.data(ResultTree::DescriptionRole).toString(), *painter);
}
