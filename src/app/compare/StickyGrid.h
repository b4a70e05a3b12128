// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QPixmap>
#include <QStaticText>

#include <array>
#include <vector>

/// A text of a grid, broken where it has to be, with a quiet line below, and a check box or radio button before it,
/// which a click on the text presses.
class GridCell : public QWidget
{
    Q_OBJECT

public:
    enum class Weight { Plain, Bold, Quiet, Gone };

    explicit GridCell(QAbstractButton *button = nullptr, Weight weight = Weight::Plain);

    void setText(const QString &text, const QString &quietLine = {});
    void setPicture(const QPixmap &picture);
    QString text() const { return m_text.text(); }
    /// Null where the cell only shows something.
    QAbstractButton *button() const { return m_button; }

    int heightForWidth(int width) const override;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    int textLeft() const;
    void setTextWidth(int width) const;
    qreal quietTop() const;

    QAbstractButton *m_button;
    Weight m_weight;
    mutable QStaticText m_text; // laid out for a width
    mutable QStaticText m_quietLine;
    QPixmap m_picture;
};

/// Rows of cells that scroll below their heads and between their titles and results, which stay in view. A control that
/// gets the focus comes into view; Up and Down go to the next one in its column.
class StickyGrid : public QAbstractScrollArea
{
    Q_OBJECT

public:
    explicit StickyGrid(QWidget *parent = nullptr);
    ~StickyGrid() override;

    struct Row
    {
        GridCell *title;
        std::vector<GridCell *> cells; ///< null for an empty one
        GridCell *result;
    };

    void setNarrowestColumn(int width) { m_narrowestColumn = width; }
    /// Takes the cells over, as the next does. Heads from before are deleted.
    void setHeads(const Row &heads);
    /// In place of the rows before, which are deleted.
    void setRows(std::vector<Row> rows);
    /// To be called when the texts of cells have changed.
    void arrange();

protected:
    bool eventFilter(QObject *button, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    class Sheet;
    struct Part
    {
        QWidget *window; // clips the sheet
        Sheet *sheet;
    };
    enum { Title, Cells, Result }; // the columns of parts

    static void remove(const Row &row);
    void adopt(const Row &row, std::array<Part, 3> &parts);
    int heightOf(const Row &row, const std::array<int, 3> &widths) const;
    void place(const Row &row, int top, int height, const std::array<int, 3> &widths);
    void moveSheets();
    void showFocused(QWidget *focused);
    void focusInColumn(const QObject *from, int step);

    std::array<Part, 3> m_headParts{};
    std::array<Part, 3> m_rowParts{};
    Row m_heads{};
    std::vector<Row> m_rows;
    int m_narrowestColumn = 200; // then they scroll
};
