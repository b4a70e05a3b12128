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

#include <algorithm>

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

void FindingDelegate::paintGroup(QPainter &painter, const QStyleOptionViewItem &item, const QModelIndex &group) const
{
    const QFontMetrics metrics = painter.fontMetrics();
    const QString count = QLocale().toString(group.model()->rowCount(group));
    const int height = scaled(20, metrics);
    QRect badge(0, 0, std::max(metrics.horizontalAdvance(count) + height, height), height);
    badge.moveCenter(item.rect.center());
    badge.moveRight(item.rect.right() - kGap);
    const QRect title = item.rect.adjusted(kMargin, 0, badge.left() - item.rect.right() - kMargin, 0);
    painter.drawText(title, Qt::AlignLeft | Qt::AlignVCenter,
        metrics.elidedText(group.data().toString(), Qt::ElideRight, title.width()));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(colourFor(ColourRole::Badge, item.palette));
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(badge, badge.height() / 2.0, badge.height() / 2.0);
    painter.setPen(colourFor(ColourRole::Quiet, item.palette));
    painter.drawText(badge, Qt::AlignCenter, count);
}

void FindingDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    item.text.clear();
    QApplication::style()->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);

    painter->save();
    const QColor quiet = colourFor(ColourRole::Quiet, item.palette);
    painter->setPen(index.data(ResultTree::IsGoneRole).toBool() ? quiet : item.palette.color(QPalette::Text));
    QFont bold = item.font;
    bold.setWeight(QFont::DemiBold);
    painter->setFont(bold);
    if (index.data(ResultTree::IsGroupRole).toBool()) {
        paintGroup(*painter, item, index);
        painter->restore();
        return;
    }
    const int size = scaled(kPictureSize, item.fontMetrics);
    const QRect row = item.rect.adjusted(kMargin, 0, -kGap, 0);
    painter->drawPixmap(row.left(), row.top() + (row.height() - size) / 2,
        pictureOf(index, size, painter->device()->devicePixelRatioF(), item.palette));
    const QFontMetrics metrics(bold);
    QRect line(row.left() + size + kGap, 0, row.width() - size - kGap, metrics.height());
    line.moveTop(row.top() + (row.height() - 2 * metrics.height()) / 2);
    painter->drawText(line, Qt::AlignLeft, metrics.elidedText(lineOf(index), Qt::ElideRight, line.width()));
    line.translate(0, metrics.height());
    painter->setFont(item.font);
    painter->setPen(quiet);
    painter->drawText(line, Qt::AlignLeft,
        item.fontMetrics.elidedText(index.data(ResultTree::DescriptionRole).toString(), Qt::ElideRight, line.width()));
    painter->restore();
}
