// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/FindingDelegate.h"

#include "app/look/ContactPicture.h"
#include "app/look/Controls.h"
#include "results/ResultTree.h"

#include <QApplication>
#include <QLocale>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int kMargin = 5;

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
    return {200, (isGroup ? 1 : 2) * option.fontMetrics.height() + 3 * kMargin};
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
    QRect badge = item.rect.adjusted(0, kMargin, -2 * kMargin, -kMargin);
    badge.setLeft(badge.right() - std::max(metrics.horizontalAdvance(count) + 4 * kMargin, badge.height()));
    const QRect title = item.rect.adjusted(kMargin, 0, badge.left() - item.rect.right() - kMargin, 0);
    painter.drawText(title, Qt::AlignLeft | Qt::AlignVCenter,
        metrics.elidedText(group.data().toString(), Qt::ElideRight, title.width()));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(item.palette.color(QPalette::Window));
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(badge, badge.height() / 2.0, badge.height() / 2.0);
    painter.setPen(item.palette.color(QPalette::WindowText));
    painter.drawText(badge, Qt::AlignCenter, count);
}

void FindingDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    item.text.clear();
    QApplication::style()->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);

    const bool isSelected = item.state.testFlag(QStyle::State_Selected);
    const QPalette &colours = item.palette;
    painter->save();
    painter->setPen(colours.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
    QRect area = item.rect.adjusted(kMargin, kMargin, -kMargin, -kMargin);
    QFont bold = item.font;
    bold.setBold(true);
    if (index.data(ResultTree::IsGroupRole).toBool()) {
        painter->setFont(bold);
        paintGroup(*painter, item, index);
        painter->restore();
        return;
    }
    const int size = area.height();
    painter->drawPixmap(area.topLeft(), pictureOf(index, size, painter->device()->devicePixelRatioF(), colours));
    area.setLeft(area.left() + size + 2 * kMargin);
    const QFontMetrics metrics(bold);
    const QColor quiet = colours.color(QPalette::PlaceholderText);
    if (!isSelected && index.data(ResultTree::IsGoneRole).toBool())
        painter->setPen(quiet);
    painter->setFont(bold);
    painter->drawText(
        area, Qt::AlignLeft | Qt::AlignTop, metrics.elidedText(lineOf(index), Qt::ElideRight, area.width()));
    painter->setFont(item.font);
    if (!isSelected)
        painter->setPen(quiet);
    painter->drawText(area, Qt::AlignLeft | Qt::AlignBottom,
        item.fontMetrics.elidedText(index.data(ResultTree::DescriptionRole).toString(), Qt::ElideRight, area.width()));
    painter->restore();
}
