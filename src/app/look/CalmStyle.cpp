// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/look/CalmStyle.h"

#include "app/look/CalmShapes.h"
#include "app/look/Colours.h"
#include "app/look/Controls.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>

#include <utility>

namespace {

constexpr int kControlHeight = 36;
constexpr int kHeaderHeight = 36;
constexpr int kFrameWidth = 2; // of the ring around lists, too
constexpr int kTitleMargin = 14; // of a box, around its title
constexpr int kFieldMargin = 6;

bool hasProperty(const QWidget *widget, const char *name)
{
    return widget && widget->property(name).toBool();
}

bool isPrimary(const QStyleOptionButton &option, const QWidget *widget)
{
    if (!widget)
        return false;
    const bool isDefault = option.features.testFlag(QStyleOptionButton::DefaultButton);
    return hasProperty(widget, kPrimaryProperty) || (isDefault && qobject_cast<const QDialog *>(widget->window()));
}

/// Of fields: in a box, which has the colour that fields have elsewhere, that of the window.
ColourRole fieldGround(const QWidget *widget)
{
    const QWidget *above = widget;
    while (above && !qobject_cast<const QGroupBox *>(above))
        above = above->parentWidget();
    return above ? ColourRole::Ground : ColourRole::Pane;
}

/// Of a scroll bar: what it scrolls has this ground.
QColor groundBeside(const QStyleOption &option, const QWidget *bar)
{
    const QWidget *holder = bar ? bar->parentWidget() : nullptr; // in a scroll area
    const auto *area = qobject_cast<const QAbstractScrollArea *>(holder ? holder->parentWidget() : nullptr);
    return option.palette.color(area ? area->viewport()->backgroundRole() : QPalette::Base);
}

/// A bare editor within something else has no outline.
void drawLineEdit(const QStyleOption &option, const QWidget *widget, QPainter &painter)
{
    const bool isBare = qobject_cast<const QLineEdit *>(widget) && option.type == QStyleOption::SO_Frame
        && static_cast<const QStyleOptionFrame &>(option).lineWidth == 0;
    if (!isBare)
        drawField(option, fieldGround(widget), hasProperty(widget, kWrongProperty), painter);
    else if (!qobject_cast<const QComboBox *>(widget->parentWidget()))
        painter.fillRect(option.rect, option.palette.color(QPalette::Base));
}

/// Not around what shows the focus in another way.
bool hasFocusRing(const QStyleOption &option, const QWidget *widget)
{
    const auto *table = qobject_cast<const QTableView *>(widget);
    const bool hasCells = table && table->editTriggers() != QAbstractItemView::NoEditTriggers;
    const bool isSelectedRow = option.state.testFlag(QStyle::State_Selected) && !hasCells;
    return !isSelectedRow && !qobject_cast<const QPushButton *>(widget);
}

/// Leaves the painter as it was.
class SmoothPainter
{
public:
    explicit SmoothPainter(QPainter *painter) : m_painter(*painter)
    {
        m_painter.save();
        m_painter.setRenderHint(QPainter::Antialiasing);
    }
    ~SmoothPainter() { m_painter.restore(); }
    Q_DISABLE_COPY_MOVE(SmoothPainter)

private:
    QPainter &m_painter;
};

} // namespace

CalmStyle::CalmStyle() : QProxyStyle(QStringLiteral("Fusion"))
{
    QIcon::setFallbackThemeName(QStringLiteral("Adwaita")); // for desktops without icons, and themes that lack some
}

void CalmStyle::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    if (auto *view = qobject_cast<QAbstractItemView *>(widget))
        view->viewport()->setAttribute(Qt::WA_Hover); // or cells are not told about the mouse
    if (auto *text = qobject_cast<QPlainTextEdit *>(widget))
        text->viewport()->setAutoFillBackground(false); // over the round ground
}

void CalmStyle::polish(QApplication *application)
{
    QProxyStyle::polish(application);
    application->installEventFilter(this);
}

bool CalmStyle::eventFilter(QObject *object, QEvent *event)
{
    const bool isPress = event->type() == QEvent::KeyPress;
    const bool isAlt =
        (isPress || event->type() == QEvent::KeyRelease) && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Alt;
    const bool mayBeElsewhere = event->type() == QEvent::WindowDeactivate; // where the key is released
    if ((isAlt || mayBeElsewhere) && std::exchange(m_isAltDown, isPress) != isPress) {
        for (QWidget *widget : QApplication::allWidgets())
            widget->update();
    }
    return QProxyStyle::eventFilter(object, event);
}

void CalmStyle::drawPrimitive(
    PrimitiveElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const
{
    const SmoothPainter smooth(painter);
    const auto *item = qstyleoption_cast<const QStyleOptionViewItem *>(option);
    switch (element) {
    case PE_FrameLineEdit:
    case PE_PanelLineEdit:
        return drawLineEdit(*option, widget, *painter);
    case PE_PanelButtonCommand:
        if (const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option))
            drawButton(*button, isPrimary(*button, widget), hasProperty(widget, kDestructiveProperty), *painter);
        return;
    case PE_Frame:
        if (qobject_cast<const QLabel *>(widget))
            drawChip(*option, ColourRole::Ground, *painter);
        else if (qobject_cast<const QPlainTextEdit *>(widget))
            drawField(*option, fieldGround(widget), false, *painter);
        else
            drawFrame(*option, *painter);
        return;
    case PE_FrameFocusRect:
        if (hasFocusRing(*option, widget))
            drawFocusRing(*option, *painter);
        return;
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        return drawCheckBox(*option, *painter);
    case PE_IndicatorRadioButton:
        return drawRadioButton(*option, *painter);
    case PE_FrameGroupBox:
        return drawBox(*option, *painter);
    case PE_PanelItemViewRow:
    case PE_PanelItemViewItem:
        if (item)
            drawRow(*item, qobject_cast<const QTableView *>(widget), *painter);
        return;
    case PE_IndicatorBranch:
        if (option->state.testFlag(State_Children)) {
            const bool isOpen = option->state.testFlag(State_Open);
            drawChevron(option->rect, isOpen ? Qt::DownArrow : Qt::RightArrow,
                colourFor(ColourRole::Quiet, option->palette), *painter);
        }
        return;
    case PE_IndicatorHeaderArrow: {
        const auto *header = qstyleoption_cast<const QStyleOptionHeader *>(option);
        const bool isUp = header && header->sortIndicator == QStyleOptionHeader::SortUp;
        drawChevron(
            option->rect, isUp ? Qt::DownArrow : Qt::UpArrow, colourFor(ColourRole::Accent, option->palette), *painter);
        return;
    }
    case PE_PanelStatusBar:
        painter->fillRect(option->rect, option->palette.color(QPalette::Window));
        painter->fillRect(0, 0, option->rect.width(), 1, colourFor(ColourRole::Line, option->palette));
        return;
    case PE_PanelScrollAreaCorner:
        painter->fillRect(option->rect, option->palette.color(QPalette::Base));
        return;
    case PE_FrameStatusBarItem:
        return;
    default:
        break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void CalmStyle::drawControl(
    ControlElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const
{
    const SmoothPainter smooth(painter);
    switch (element) {
    case CE_PushButtonLabel:
        if (const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option))
            drawButtonLabel(*button, isPrimary(*button, widget), hasProperty(widget, kDestructiveProperty),
                styleHint(SH_UnderlineShortcut, option, widget), *painter);
        return;
    case CE_HeaderEmptyArea:
        if (const auto *header = qobject_cast<const QHeaderView *>(widget);
            header && header->orientation() == Qt::Vertical) {
            painter->fillRect(option->rect, option->palette.color(QPalette::Base)); // below the rows
            return;
        }
        [[fallthrough]];
    case CE_HeaderSection:
        return drawHeaderSection(*option, *painter);
    case CE_HeaderLabel:
        if (const auto *header = qstyleoption_cast<const QStyleOptionHeader *>(option))
            drawHeaderLabel(*header, *painter);
        return;
    case CE_ProgressBarGroove:
    case CE_ProgressBarContents:
        if (const auto *bar = qstyleoption_cast<const QStyleOptionProgressBar *>(option);
            bar && (element == CE_ProgressBarGroove || bar->maximum > bar->minimum))
            return drawProgress(*bar, element == CE_ProgressBarGroove, *painter);
        break;
    case CE_MenuBarItem:
        if (const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option))
            drawMenuTitle(*item, styleHint(SH_UnderlineShortcut, option, widget), *painter);
        return;
    case CE_MenuBarEmptyArea:
        painter->fillRect(option->rect, option->palette.color(QPalette::Window));
        return;
    case CE_Splitter:
        return; // a gap is enough
    default:
        break;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void CalmStyle::drawComplexControl(
    ComplexControl control, const QStyleOptionComplex *option, QPainter *painter, const QWidget *widget) const
{
    const SmoothPainter smooth(painter);
    if (control == CC_ScrollBar) {
        painter->fillRect(option->rect, groundBeside(*option, widget));
        drawScrollBar(*option, subControlRect(control, option, SC_ScrollBarSlider, widget), *painter);
    } else if (control == CC_ComboBox) {
        if (hasProperty(widget, kChipProperty))
            drawPill(*option, *painter);
        else
            drawField(*option, fieldGround(widget), false, *painter);
        drawChevron(subControlRect(control, option, SC_ComboBoxArrow, widget), Qt::DownArrow,
            colourFor(ColourRole::Quiet, option->palette), *painter);
    } else if (const auto *box = qstyleoption_cast<const QStyleOptionGroupBox *>(option);
               control == CC_GroupBox && box) {
        drawBox(*option, *painter);
        QFont font = painter->font();
        font.setWeight(QFont::DemiBold);
        painter->setFont(font);
        painter->setPen(colourFor(ColourRole::Quiet, option->palette));
        painter->drawText(subControlRect(control, option, SC_GroupBoxLabel, widget),
            int(Qt::AlignLeft | Qt::AlignVCenter) | Qt::TextHideMnemonic, box->text);
    } else {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
}

QIcon CalmStyle::standardIcon(StandardPixmap icon, const QStyleOption *option, const QWidget *widget) const
{
    if (icon == SP_MessageBoxWarning || icon == SP_MessageBoxCritical)
        return symbol(
            QStringLiteral("dialog-warning"), icon == SP_MessageBoxWarning ? ColourRole::Warning : ColourRole::Gone);
    return QProxyStyle::standardIcon(icon, option, widget);
}

int CalmStyle::styleHint(
    StyleHint hint, const QStyleOption *option, const QWidget *widget, QStyleHintReturn *returnData) const
{
    switch (hint) {
    case SH_DialogButtonBox_ButtonsHaveIcons: // pictures beside the words add nothing to them
    case SH_EtchDisabledText:
        return 0;
    case SH_DialogButtonLayout: // the primary button at the end, on every desktop
        return QDialogButtonBox::GnomeLayout;
    case SH_ItemView_ShowDecorationSelected: // the whole row is one
        return 1;
    case SH_UnderlineShortcut:
        return m_isAltDown || qobject_cast<const QMenu *>(widget)
            || (qobject_cast<const QMenuBar *>(widget) && widget->hasFocus());
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

int CalmStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    if (metric == PM_DefaultFrameWidth && qobject_cast<const QAbstractScrollArea *>(widget))
        return kFrameWidth;
    if (const auto length = designMetric(metric, widget)) {
        const bool isLayout = metric >= PM_LayoutLeftMargin && metric <= PM_LayoutVerticalSpacing;
        if (isLayout || (!option && !widget))
            return *length;
        return scaled(*length, widget ? widget->fontMetrics() : option->fontMetrics);
    }
    return QProxyStyle::pixelMetric(metric, option, widget);
}

QSize CalmStyle::sizeFromContents(
    ContentsType type, const QStyleOption *option, const QSize &contents, const QWidget *widget) const
{
    QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    switch (type) {
    case CT_PushButton:
        if (hasProperty(widget, kLinkProperty))
            return {contents.width() + 8, scaled(28, option->fontMetrics)};
        size.setWidth(std::max(size.width(), contents.width() + 2 * scaled(14, option->fontMetrics)));
        if (const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
            button && !button->icon.isNull())
            size.rwidth() += scaled(4, option->fontMetrics);
        [[fallthrough]];
    case CT_LineEdit:
    case CT_ComboBox:
        if (const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option); frame && frame->lineWidth == 0)
            break; // an editor within something else
        size.setHeight(std::max(size.height(), scaled(kControlHeight, option->fontMetrics)));
        break;
    case CT_HeaderSection:
        size.setHeight(std::max(size.height(), scaled(kHeaderHeight, option->fontMetrics)));
        break;
    case CT_MenuItem:
        if (const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
            item && item->menuItemType != QStyleOptionMenuItem::Separator)
            size.setHeight(std::max(size.height(), scaled(30, option->fontMetrics)));
        break;
    case CT_MenuBarItem:
        size.setHeight(std::max(size.height(), scaled(30, option->fontMetrics)));
        break;
    case CT_ItemViewItem:
        if (!qobject_cast<const QTableView *>(widget))
            size.setHeight(std::max(size.height() + scaled(10, option->fontMetrics), scaled(32, option->fontMetrics)));
        break;
    default:
        break;
    }
    return size;
}

QRect CalmStyle::subElementRect(SubElement element, const QStyleOption *option, const QWidget *widget) const
{
    if (element == SE_ItemViewItemFocusRect) // the cell, not only its text
        return option->rect;
    if (element == SE_RadioButtonClickRect) // the row
        return option->rect;
    const QRect rect = QProxyStyle::subElementRect(element, option, widget);
    if (element == SE_LineEditContents) {
        const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
        const int margin = frame && frame->lineWidth > 0 ? scaled(kFieldMargin, option->fontMetrics) : 0;
        return rect.adjusted(margin, 0, -margin, 0);
    }
    return rect;
}

QRect CalmStyle::subControlRect(
    ComplexControl control, const QStyleOptionComplex *option, SubControl part, const QWidget *widget) const
{
    if (control == CC_GroupBox) {
        const auto *box = qstyleoption_cast<const QStyleOptionGroupBox *>(option);
        const int margin = scaled(kTitleMargin, option->fontMetrics);
        const int titleHeight = box && box->text.isEmpty() ? 8 - margin : option->fontMetrics.height();
        switch (part) {
        case SC_GroupBoxFrame:
            return option->rect;
        case SC_GroupBoxLabel:
            return {margin, margin - 4, option->rect.width() - 2 * margin, titleHeight};
        case SC_GroupBoxContents:
            return option->rect.adjusted(margin - 8, margin - 4 + titleHeight, 8 - margin, 8 - margin);
        default:
            return QProxyStyle::subControlRect(control, option, part, widget);
        }
    }
    if (control == CC_ComboBox && part == SC_ComboBoxEditField)
        return QProxyStyle::subControlRect(control, option, part, widget)
            .adjusted(scaled(kFieldMargin, option->fontMetrics), 0, 0, 0);
    const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control != CC_ScrollBar || !bar)
        return QProxyStyle::subControlRect(control, option, part, widget);
    // That of a longer bar without the arrows at its ends.
    const bool isHorizontal = bar->orientation == Qt::Horizontal;
    const int arrow = pixelMetric(PM_ScrollBarExtent, bar, widget);
    QStyleOptionSlider longer = *bar;
    longer.rect.adjust(0, 0, isHorizontal ? 2 * arrow : 0, isHorizontal ? 0 : 2 * arrow);
    const QRect rect = QProxyStyle::subControlRect(control, &longer, part, widget);
    return rect.translated(isHorizontal ? -arrow : 0, isHorizontal ? 0 : -arrow) & bar->rect;
}
