// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/TableViewWindowController.h"

#include "app/look/CalmShapes.h"
#include "app/look/Controls.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListView>
#include <QLocale>
#include <QMouseEvent>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr int kRowHeight = 44;
constexpr int kGap = 12;

/// A condition with its explanation and how often the last scan found it. The words belong to the check box beside
/// them.
class CheckBoxRow : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const int width = option.fontMetrics.horizontalAdvance(explanationOf(index));
        return {width + scaled(kRoomBeside, option.fontMetrics), scaled(kRowHeight, option.fontMetrics)};
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyleOptionViewItem item = option;
        initStyleOption(&item, index);
        const QString title = std::exchange(item.text, QString());
        const QStyle *style = item.widget->style();
        style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
        const QRect box = style->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &item, item.widget);
        QRect words = item.rect;
        words.setLeft(box.right() + kGap);
        if (const QVariant count = index.data(ConditionListModel::CountRole); count.isValid())
            words.setRight(drawBadge(item, QLocale().toString(count.toInt()), *painter).left() - kGap);
        drawTwoLines(item, words, title, explanationOf(index), *painter);
    }

protected:
    bool editorEvent(
        QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option, const QModelIndex &index) override
    {
        const bool isRelease = event->type() == QEvent::MouseButtonRelease;
        if (!isRelease || static_cast<QMouseEvent *>(event)->button() != Qt::LeftButton)
            return QStyledItemDelegate::editorEvent(event, model, option, index);
        return model->setData(index, {}, Qt::CheckStateRole);
    }

private:
    static constexpr int kRoomBeside = 130; // for the check box, the count and the margins

    static QString explanationOf(const QModelIndex &index)
    {
        return index.data(ConditionListModel::ExplanationRole).toString();
    }
};

} // namespace

TableViewWindowController::TableViewWindowController(ConditionListModel &conditions, QWidget *parent)
    : QDialog(parent), m_conditions(conditions), m_list(new QListView(this))
{
    setWindowTitle(tr("Preferences"));
    m_list->setModel(&m_conditions);
    m_list->setItemDelegate(new CheckBoxRow(m_list));
    m_list->setAccessibleName(tr("Conditions to scan for"));
    m_list->setCurrentIndex(m_conditions.index(0));
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto *title = new QLabel(tr("Scans look for:"));
    title->setBuddy(m_list);
    auto *above = new QHBoxLayout;
    above->addWidget(title, 1);
    for (const bool isSelected : {true, false}) {
        auto *button = new QPushButton(isSelected ? tr("&All") : tr("&None"));
        button->setAutoDefault(false); // Return presses OK
        connect(button, &QPushButton::clicked, this, [this, isSelected] { m_conditions.selectAll(isSelected); });
        above->addWidget(button);
    }
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &TableViewWindowController::okClicked);
    connect(buttons, &QDialogButtonBox::rejected, this, &TableViewWindowController::cancelClicked);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(above);
    layout->addWidget(m_list, 1);
    layout->addWidget(buttons);
    const int frame = 2 * m_list->frameWidth();
    setFirstSize(*this,
        {m_list->sizeHintForColumn(0) + frame + 40, m_list->sizeHintForRow(0) * m_conditions.rowCount() + frame + 140});
}

void TableViewWindowController::showWindow()
{
    show();
    raise();
    activateWindow();
    m_list->setFocus();
}
