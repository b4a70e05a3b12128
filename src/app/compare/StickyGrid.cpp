// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/compare/StickyGrid.h"

#include "app/look/Colours.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOption>

#include <algorithm>

namespace {

constexpr int kMargin = 12;
constexpr int kMarginAbove = 8;
constexpr int kGap = 8;
constexpr int kRingMargin = 2;
constexpr int kWidestTitle = 176;
constexpr qreal kQuietScale = 0.92;

QFont quietFont(QFont font)
{
    font.setBold(false);
    font.setPointSizeF(font.pointSizeF() * kQuietScale);
    return font;
}

} // namespace

GridCell::GridCell(QAbstractButton *button, Weight weight) : m_button(button), m_weight(weight)
{
    QTextOption option(Qt::AlignLeft);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    for (QStaticText *text : {&m_text, &m_quietLine}) {
        text->setTextFormat(Qt::PlainText);
        text->setTextOption(option);
    }
    if (button)
        button->setParent(this);
    QFont own = font();
    own.setBold(weight == Weight::Bold);
    setFont(own);
}

void GridCell::setText(const QString &text, const QString &quietLine)
{
    constexpr qsizetype kLongest = 600;
    const bool isLong = text.size() > kLongest;
    QString shown = isLong ? text.first(kLongest) + QStringLiteral(" ...") : text;
    m_text.setText(shown.replace(QLatin1Char('\n'), QChar::LineSeparator)); // what a static text breaks lines at
    setToolTip(isLong ? text : QString());
    m_quietLine.setText(quietLine);
    update();
}

void GridCell::setPicture(const QPixmap &picture)
{
    m_picture = picture;
    update();
}

int GridCell::textLeft() const
{
    return m_button ? kMargin + m_button->sizeHint().width() + kGap : kMargin;
}

void GridCell::setTextWidth(int width) const
{
    const int room = std::max(width - textLeft() - kMargin, 1);
    m_text.setTextWidth(room);
    m_text.prepare({}, font());
    m_quietLine.setTextWidth(room);
    m_quietLine.prepare({}, quietFont(font()));
}

int GridCell::heightForWidth(int width) const
{
    setTextWidth(width);
    const qreal height = m_quietLine.text().isEmpty() ? 0 : m_quietLine.size().height();
    return qCeil(quietTop() + height) + kMarginAbove;
}

/// Below the text or the picture.
qreal GridCell::quietTop() const
{
    const qreal line = fontMetrics().height();
    const qreal height = m_picture.isNull() ? m_text.size().height() : m_picture.deviceIndependentSize().height();
    return kMarginAbove + std::max(line, height);
}

QSize GridCell::sizeHint() const
{
    const int width = textLeft() + fontMetrics().boundingRect(text()).width() + kGap + kMargin;
    return {width, heightForWidth(width)};
}

void GridCell::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    setTextWidth(width());
    const QColor quiet = isEnabled() ? colourFor(ColourRole::Quiet, palette()) : palette().color(QPalette::Text);
    const QPointF at(textLeft(), kMarginAbove);
    if (!m_picture.isNull()) {
        painter.setOpacity(isEnabled() ? 1 : 0.4);
        painter.drawPixmap(at, m_picture);
        painter.setOpacity(1);
    }
    if (m_button && m_button->hasFocus()) { // which has no text for a ring around it
        QStyleOptionFocusRect ring;
        ring.initFrom(this);
        ring.rect = rect().adjusted(kRingMargin, kRingMargin, -kRingMargin, -kRingMargin);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &ring, &painter, this);
    }
    painter.setFont(font());
    painter.setPen(m_weight == Weight::Quiet ? quiet
            : m_weight == Weight::Gone       ? colourFor(ColourRole::Gone, palette())
                                             : palette().color(QPalette::Text));
    painter.drawStaticText(at, m_text);
    if (m_quietLine.text().isEmpty())
        return;
    painter.setFont(quietFont(font()));
    painter.setPen(quiet);
    painter.drawStaticText(QPointF(at.x(), quietTop()), m_quietLine);
}

void GridCell::resizeEvent(QResizeEvent *)
{
    if (!m_button)
        return;
    const QSize size = m_button->sizeHint();
    m_button->setGeometry(QRect(QPoint(kMargin, kMarginAbove + (fontMetrics().height() - size.height()) / 2), size));
}

void GridCell::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_button && m_button->isEnabled() && event->button() == Qt::LeftButton && rect().contains(event->pos()))
        m_button->click();
}

/// The rows' ground, with a line below each.
class StickyGrid::Sheet : public QWidget
{
public:
    Sheet(QWidget *parent, bool isTinted) : QWidget(parent), m_isTinted(isTinted) { }

    void setLines(std::vector<int> lines)
    {
        m_lines = std::move(lines);
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), colourFor(m_isTinted ? ColourRole::AccentSoft : ColourRole::Pane, palette()));
        painter.setPen(colourFor(ColourRole::Line, palette()));
        for (const int line : m_lines)
            painter.drawLine(0, line, width(), line);
        if (m_isTinted)
            painter.drawLine(0, 0, 0, m_lines.empty() ? 0 : m_lines.back());
    }

private:
    const bool m_isTinted;
    std::vector<int> m_lines;
};

StickyGrid::StickyGrid(QWidget *parent) : QAbstractScrollArea(parent)
{
    setFocusPolicy(Qt::NoFocus);
    setFrameShape(NoFrame);
    viewport()->setBackgroundRole(QPalette::Base);
    for (auto *parts : {&m_headParts, &m_rowParts}) {
        for (const int column : {Title, Cells, Result}) {
            Part &part = (*parts)[std::size_t(column)];
            part.window = new QWidget(viewport());
            part.sheet = new Sheet(part.window, column == Result);
        }
    }
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) { showFocused(now); });
}

StickyGrid::~StickyGrid()
{
    disconnect(qApp, nullptr, this, nullptr); // the cells may have the focus, and go later
}

void StickyGrid::adopt(const Row &row, std::array<Part, 3> &parts)
{
    const auto take = [](GridCell *cell, const Part &part) {
        cell->setParent(part.sheet);
        cell->show();
    };
    take(row.title, parts[Title]);
    for (GridCell *cell : row.cells) {
        if (!cell)
            continue;
        take(cell, parts[Cells]);
        if (cell->button())
            cell->button()->installEventFilter(this);
    }
    take(row.result, parts[Result]);
}

void StickyGrid::remove(const Row &row)
{
    delete row.title;
    for (GridCell *cell : row.cells)
        delete cell;
    delete row.result;
}

void StickyGrid::setHeads(const Row &heads)
{
    remove(m_heads);
    m_heads = heads;
    adopt(m_heads, m_headParts);
}

void StickyGrid::setRows(std::vector<Row> rows)
{
    for (const Row &row : m_rows)
        remove(row);
    m_rows = std::move(rows);
    for (const Row &row : m_rows)
        adopt(row, m_rowParts);
    arrange();
}

int StickyGrid::heightOf(const Row &row, const std::array<int, 3> &widths) const
{
    int height = std::max(row.title->heightForWidth(widths[Title]), row.result->heightForWidth(widths[Result]));
    for (const GridCell *cell : row.cells) {
        if (cell)
            height = std::max(height, cell->heightForWidth(widths[Cells]));
    }
    return height + 1; // the line
}

void StickyGrid::place(const Row &row, int top, int height, const std::array<int, 3> &widths)
{
    row.title->setGeometry(0, top, widths[Title], height);
    for (std::size_t column = 0; column < row.cells.size(); ++column) {
        if (row.cells[column])
            row.cells[column]->setGeometry(int(column) * widths[Cells], top, widths[Cells], height);
    }
    row.result->setGeometry(0, top, widths[Result], height);
}

void StickyGrid::arrange()
{
    if (!m_heads.title)
        return;
    std::array<int, 3> widths{};
    for (const Row &row : m_rows)
        widths[Title] = std::max(widths[Title], row.title->sizeHint().width());
    widths[Title] = std::min(widths[Title], kWidestTitle);
    const int count = int(m_heads.cells.size());
    const QSize room = viewport()->size();
    widths[Cells] = std::max((room.width() - widths[Title]) / (count + 1), m_narrowestColumn);
    widths[Result] = widths[Cells];
    const int headHeight = heightOf(m_heads, widths);
    place(m_heads, 0, headHeight - 1, widths);
    std::vector<int> lines;
    int bottom = 0;
    for (const Row &row : m_rows) {
        const int height = heightOf(row, widths);
        place(row, bottom, height - 1, widths);
        bottom += height;
        lines.push_back(bottom - 1);
    }
    const int middle = std::max(room.width() - widths[Title] - widths[Result], 0);
    const std::array lefts{0, widths[Title], widths[Title] + middle};
    const std::array shown{widths[Title], middle, widths[Result]};
    const std::array whole{widths[Title], std::max(widths[Cells] * count, middle), widths[Result]};
    const int below = std::max(room.height() - headHeight, 0);
    for (const std::size_t column : {Title, Cells, Result}) {
        m_headParts[column].window->setGeometry(lefts[column], 0, shown[column], headHeight);
        m_headParts[column].sheet->resize(whole[column], headHeight);
        m_headParts[column].sheet->setLines({0, headHeight - 1});
        m_rowParts[column].window->setGeometry(lefts[column], headHeight, shown[column], below);
        m_rowParts[column].sheet->resize(whole[column], std::max(bottom, below));
        m_rowParts[column].sheet->setLines(lines);
    }
    horizontalScrollBar()->setPageStep(middle);
    horizontalScrollBar()->setSingleStep(m_narrowestColumn / 4);
    horizontalScrollBar()->setRange(0, whole[Cells] - middle);
    verticalScrollBar()->setPageStep(below);
    verticalScrollBar()->setSingleStep(fontMetrics().height());
    verticalScrollBar()->setRange(0, std::max(bottom - below, 0));
    moveSheets();
}

void StickyGrid::moveSheets()
{
    const int x = -horizontalScrollBar()->value();
    const int y = -verticalScrollBar()->value();
    m_headParts[Cells].sheet->move(x, 0);
    m_rowParts[Title].sheet->move(0, y);
    m_rowParts[Cells].sheet->move(x, y);
    m_rowParts[Result].sheet->move(0, y);
}

void StickyGrid::showFocused(QWidget *focused)
{
    viewport()->update(); // its ring
    const QWidget *cell = focused ? focused->parentWidget() : nullptr;
    const bool isRow = cell && cell->parentWidget() == m_rowParts[Cells].sheet;
    if (!isRow && !(cell && cell->parentWidget() == m_headParts[Cells].sheet))
        return;
    const auto reveal = [](QScrollBar *bar, int from, int to) {
        if (from < bar->value())
            bar->setValue(from);
        else if (to > bar->value() + bar->pageStep())
            bar->setValue(to - bar->pageStep());
    };
    reveal(horizontalScrollBar(), cell->x(), cell->x() + cell->width());
    if (isRow)
        reveal(verticalScrollBar(), cell->y(), cell->y() + cell->height());
}

bool StickyGrid::eventFilter(QObject *button, QEvent *event)
{
    const int key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent *>(event)->key() : 0;
    if (key != Qt::Key_Up && key != Qt::Key_Down)
        return QAbstractScrollArea::eventFilter(button, event);
    focusInColumn(button, key == Qt::Key_Down ? 1 : -1);
    return true;
}

void StickyGrid::focusInColumn(const QObject *from, int step)
{
    for (std::size_t column = 0; column < m_heads.cells.size(); ++column) {
        std::vector<QAbstractButton *> buttons;
        const auto add = [&buttons, column](const Row &row) {
            if (const GridCell *cell = row.cells[column]; cell && cell->button())
                buttons.push_back(cell->button());
        };
        add(m_heads);
        for (const Row &row : m_rows)
            add(row);
        const auto place = std::ranges::find(buttons, from) - buttons.begin();
        const auto next = std::size_t(place + step);
        if (std::size_t(place) < buttons.size() && next < buttons.size())
            buttons[next]->setFocus(Qt::TabFocusReason);
    }
}

void StickyGrid::resizeEvent(QResizeEvent *)
{
    arrange();
}

void StickyGrid::scrollContentsBy(int, int)
{
    moveSheets();
}
