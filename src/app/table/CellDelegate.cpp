// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/table/CellDelegate.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <array>
#include <limits>

namespace {

/// One line of text, shaped.
class Line
{
public:
    Line(const QString &text, const QStyleOptionViewItem &cell) : m_layout(text, cell.font)
    {
        QTextOption option;
        option.setTextDirection(cell.direction);
        option.setWrapMode(QTextOption::NoWrap);
        m_layout.setTextOption(option);
        m_layout.beginLayout();
        m_line = m_layout.createLine();
        m_layout.endLayout();
    }

    bool fits(const QRect &place) const { return m_line.naturalTextWidth() <= place.width(); }

    /// How many characters are within @p width from the left. Only for a text without right-to-left letters.
    int charactersWithin(qreal width) const { return m_line.xToCursor(width, QTextLine::CursorOnCharacter); }

    /// Letters of all fonts stand on one base line in a row.
    void draw(QPainter &painter, const QRect &place, const QFontMetrics &metrics) const
    {
        const bool isRightToLeft = m_layout.textOption().textDirection() == Qt::RightToLeft;
        const qreal x = isRightToLeft ? place.right() + 1 - m_line.naturalTextWidth() : place.left();
        const int base = place.top() + (place.height() - metrics.height()) / 2 + metrics.ascent();
        m_layout.draw(&painter, {x - m_line.x(), base - m_line.ascent()});
    }

private:
    QTextLayout m_layout;
    QTextLine m_line;
};

/// Ends in an ellipsis within @p width.
QString cut(const QString &text, const Line &line, const QStyleOptionViewItem &cell, int width)
{
    constexpr char16_t firstRightToLeft = 0x0590; // Hebrew; all other such scripts come later
    const bool isPlain = cell.direction == Qt::LeftToRight && cell.textElideMode == Qt::ElideRight
        && std::ranges::all_of(text, [](QChar character) { return character.unicode() < firstRightToLeft; });
    if (!isPlain)
        return cell.fontMetrics.elidedText(text, cell.textElideMode, width);
    constexpr QChar ellipsis(0x2026);
    return text.left(line.charactersWithin(width - cell.fontMetrics.horizontalAdvance(ellipsis))) + ellipsis;
}

QPalette::ColorGroup colorGroup(const QStyleOptionViewItem &cell)
{
    if (!cell.state.testFlag(QStyle::State_Enabled))
        return QPalette::Disabled;
    return cell.state.testFlag(QStyle::State_Active) ? QPalette::Normal : QPalette::Inactive;
}

} // namespace

CellDelegate::CellDelegate(QObject *parent, Refusal refusal)
    : QStyledItemDelegate(parent), m_refusal(std::move(refusal))
{ }

QWidget *CellDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QWidget *editor = QStyledItemDelegate::createEditor(parent, option, index);
    if (auto *line = qobject_cast<QLineEdit *>(editor))
        line->setMaxLength(std::numeric_limits<int>::max()); // what is beyond the usual limit would be cut off
    m_cell = index;
    Q_EMIT editorOpened(editor);
    return editor;
}

void CellDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    QStyledItemDelegate::setEditorData(editor, index);
    if (const auto *line = qobject_cast<QLineEdit *>(editor))
        m_opened = line->text();
}

void CellDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    const auto *line = qobject_cast<QLineEdit *>(editor);
    if (!line || line->text() != m_opened)
        QStyledItemDelegate::setModelData(editor, model, index);
}

bool CellDelegate::eventFilter(QObject *object, QEvent *event)
{
    auto *line = qobject_cast<QLineEdit *>(object);
    if (line && m_refusal && event->type() == QEvent::KeyPress && line->text() != m_opened) {
        constexpr std::array committing{Qt::Key_Return, Qt::Key_Enter, Qt::Key_Tab, Qt::Key_Backtab};
        const bool isCommitting =
            std::ranges::find(committing, static_cast<QKeyEvent *>(event)->key()) != committing.end();
        const QString reason = isCommitting ? m_refusal(m_cell, line->text()) : QString();
        if (!reason.isNull()) {
            line->setAccessibleDescription(reason);
            Q_EMIT refused(m_cell, reason);
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(object, event);
}

void CellDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    constexpr qsizetype mostShown = 4000; // wider than any screen, and shaped for each frame
    const QString text = index.data().toString().left(mostShown);
    if (text.contains(u'\n')) { // such a cell is rare, and the style knows what to show of it
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    const QStyle *style = option.widget ? option.widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
    if (!text.isEmpty()) {
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        painter->setPen(
            option.palette.color(colorGroup(option), isSelected ? QPalette::HighlightedText : QPalette::Text));
        const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &option, option.widget) + 1;
        const QRect place = option.rect.adjusted(margin, 0, -margin, 0);
        const Line line(text, option);
        if (line.fits(place))
            line.draw(*painter, place, option.fontMetrics);
        else
            Line(cut(text, line, option, place.width()), option).draw(*painter, place, option.fontMetrics);
    }
    if (option.state.testFlag(QStyle::State_HasFocus)) {
        QStyleOptionFocusRect ring;
        ring.QStyleOption::operator=(option);
        ring.state |= QStyle::State_KeyboardFocusChange | QStyle::State_Item;
        style->drawPrimitive(QStyle::PE_FrameFocusRect, &ring, painter, option.widget);
    }
}
