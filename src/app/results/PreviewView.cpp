// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/PreviewView.h"

#include "app/look/Colours.h"

#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QRegularExpression>
#include <QScrollBar>
#include <QStyle>
#include <QTextLayout>

#include <algorithm>
#include <utility>

namespace {

constexpr double kPointsOfLine = 20; // between two rows of a document
constexpr int kGap = 12; // between two texts of a row
constexpr int kRingWidth = 2; // of the focus
constexpr int kTintMargin = 4; // around a changed value
constexpr int kTintRadius = 4;
constexpr int kLeastRoom = 60; // for a text
constexpr qsizetype kMostCharacters = 10'000; // of a text that are shown

/// The ground of previews: a quiet pattern over the window's base colour, and a tint below values that change.
class DocumentView : public QWidget
{
public:
    using QWidget::QWidget;

    void tint(const QRect &value, ColourRole colour) { m_tints.emplace_back(value, colour); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), palette().color(QPalette::Base));
        painter.setOpacity(0.06);
        painter.drawTiledPixmap(rect(), QPixmap(QStringLiteral(":/art/color.png")));
        painter.setOpacity(1);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        for (const auto &[value, colour] : m_tints) {
            painter.setBrush(colourFor(colour, palette()));
            painter.drawRoundedRect(value, kTintRadius, kTintRadius);
        }
    }

private:
    std::vector<std::pair<QRect, ColourRole>> m_tints;
};

/// How a changed value looks and is read.
struct ChangeLook
{
    ColourRole text;
    ColourRole ground;
    QChar sign;
    const char *words;
};

const ChangeLook *lookOf(PreviewChange change)
{
    static constexpr ChangeLook added{
        ColourRole::Added, ColourRole::AddedSoft, u'+', QT_TRANSLATE_NOOP("PreviewView", "(added)")};
    static constexpr ChangeLook removed{
        ColourRole::Gone, ColourRole::GoneSoft, u'\u2212', QT_TRANSLATE_NOOP("PreviewView", "(removed)")};
    return change == PreviewChange::None ? nullptr : change == PreviewChange::Added ? &added : &removed;
}

QColor colourOf(const PreviewField &field, const QPalette &palette)
{
    if (const ChangeLook *look = lookOf(field.change))
        return colourFor(look->text, palette);
    if (!field.colour)
        return palette.color(QPalette::Text);
    if (field.colour->ink == PreviewColour::Ink::Red)
        return palette.color(QPalette::BrightText);
    // Thin black would fall below a readable contrast, and on dark ground it would vanish: the palette's quiet text
    // colour says the same.
    return palette.color(QPalette::PlaceholderText);
}

/// The lines of a text that are not empty at its start or end.
QString linesOf(const QString &text)
{
    static const QRegularExpression lineBreak(QStringLiteral("\\r\\n|[\\r\\n\\x{2028}\\x{2029}]"));
    static const QRegularExpression outerBreaks(QStringLiteral("^\\n+|\\n+$"));
    QString lines = text.left(kMostCharacters);
    lines.replace(lineBreak, QStringLiteral("\n")).remove(outerBreaks);
    return text.size() > kMostCharacters ? lines + u'\u2026' : lines;
}

QFont boldFont(QFont font)
{
    font.setBold(true);
    return font;
}

/// Of the widest part between separators.
int widthOf(const QString &text, QChar separator, const QFont &font)
{
    int widest = 0;
    for (const QString &part : linesOf(text).split(separator))
        widest = std::max(widest, QFontMetrics(font).horizontalAdvance(part));
    return widest;
}

/// The text with a line break wherever it would become wider than that.
QString broken(const QString &text, const QFont &font, int width)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QStringList lines;
    for (const QString &paragraph : linesOf(text).split(u'\n')) {
        QTextLayout layout(paragraph, font);
        layout.setTextOption(option);
        layout.beginLayout();
        const qsizetype before = lines.size();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(width);
            lines += paragraph.mid(line.textStart(), line.textLength());
        }
        layout.endLayout();
        if (lines.size() == before)
            lines += QString();
    }
    return lines.join(u'\n');
}

enum class Unbroken { Lines, WordsOfLabels };

/// How far the columns must move apart so that these need not be broken.
double widthScale(const std::vector<PreviewField> &fieldsInReadingOrder, const QFont &font, Unbroken what)
{
    double scale = 0;
    for (std::size_t i = 1; i < fieldsInReadingOrder.size(); ++i) {
        const PreviewField &left = fieldsInReadingOrder[i - 1];
        const PreviewField &right = fieldsInReadingOrder[i];
        const int room = right.frame.x() - left.frame.x();
        if (left.frame.y() != right.frame.y() || room <= 0 || (what == Unbroken::WordsOfLabels && !left.colour))
            continue;
        const int width = widthOf(left.text, what == Unbroken::Lines ? u'\n' : u' ', font);
        scale = std::max(scale, double(width + kGap) / room);
    }
    return scale;
}

} // namespace

PreviewView::PreviewView(QWidget *parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setAccessibleName(tr("Preview of the repair"));
    setFocusPolicy(Qt::StrongFocus);
    setViewportMargins(kRingWidth, kRingWidth, kRingWidth, kRingWidth);
    setDocument({});
}

void PreviewView::setDocument(const PreviewDocument &document)
{
    m_document = document;
    layOut();
}

void PreviewView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange)
        layOut();
    QScrollArea::changeEvent(event);
}

bool PreviewView::event(QEvent *event)
{
    const bool isHandled = QScrollArea::event(event);
    if (event->type() == QEvent::Paint && hasFocus()) {
        QPainter painter(this);
        painter.setPen({palette().color(QPalette::Highlight), kRingWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin});
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
    return isHandled;
}

void PreviewView::resizeEvent(QResizeEvent *event)
{
    QScrollArea::resizeEvent(event);
    if (width() != m_laidOutWidth)
        layOut();
    else
        showChange();
}

int PreviewView::contentWidth() const
{
    // As if there were a vertical scroll bar: whether there is one must not depend on itself.
    return width() - 2 * kRingWidth - style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
}

int PreviewView::roomFor(const std::vector<PreviewField> &fields, std::size_t i, double across) const
{
    const QRect &frame = fields[i].frame;
    const bool isLastOfRow = i + 1 == fields.size() || fields[i + 1].frame.y() != frame.y();
    const double end = isLastOfRow ? contentWidth() : fields[i + 1].frame.x() * across;
    return std::max(qRound(end - frame.x() * across) - kGap, kLeastRoom);
}

void PreviewView::layOut()
{
    m_laidOutWidth = width();
    const QFont bold = boldFont(font());
    std::vector<PreviewField> fields = m_document.fields;
    std::ranges::stable_sort(fields, [](const PreviewField &a, const PreviewField &b) {
        return std::pair(-a.frame.y(), a.frame.x()) < std::pair(-b.frame.y(), b.frame.x());
    });
    const double down = std::max(1.0, QFontMetrics(bold).height() * 1.15 / kPointsOfLine);
    const double wanted = std::max(down, widthScale(fields, bold, Unbroken::Lines));
    const double across = std::max(widthScale(fields, bold, Unbroken::WordsOfLabels),
        std::min(wanted, double(contentWidth()) / m_document.size.width()));
    const auto toY = [down](double points) { return qRound(points * down); };

    auto *view = new DocumentView;
    m_change = {};
    QStringList texts;
    int right = 0;
    int moved = 0; // by the broken texts of the rows above
    int excess = 0; // of the row
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const QRect &frame = fields[i].frame;
        if (i > 0 && fields[i - 1].frame.y() != frame.y())
            moved += std::exchange(excess, 0);
        QLabel *label = addLabel(*view, fields[i], roomFor(fields, i, across));
        const QSize size = label->sizeHint();
        const int top = toY(m_document.size.height() - frame.y() - frame.height()) + moved;
        label->setGeometry(qRound(frame.x() * across), top, size.width(), std::max(toY(frame.height()), size.height()));
        excess = std::max(excess, size.height() - toY(kPointsOfLine));
        right = std::max(right, label->geometry().right() + 1);
        texts += fields[i].text;
        if (const ChangeLook *look = lookOf(fields[i].change); look && !fields[i].text.isEmpty()) {
            addSign(*view, *label, look->sign);
            view->tint(label->geometry().adjusted(-kGap, 0, kTintMargin, 0), look->ground);
            m_change |= label->geometry();
            texts += tr(look->words);
        }
    }
    m_spoken = texts.join(u' ');
    setAccessibleDescription(m_spoken);
    view->setMinimumSize(right, toY(m_document.size.height()) + moved + excess);
    setWidget(view);
    setWidgetResizable(true); // the ground fills the area, the texts keep their places
    view->show();
    showChange();
}

/// As many changed values as there is room for, with the first one.
void PreviewView::showChange()
{
    const int below = m_change.bottom() + kGap - viewport()->height();
    if (!m_change.isNull() && below > 0)
        verticalScrollBar()->setValue(std::min(below, m_change.top() - kGap));
}

/// In the gap before the value.
void PreviewView::addSign(QWidget &view, const QLabel &label, QChar sign)
{
    auto *shown = new QLabel(sign, &view);
    shown->setPalette(label.palette());
    shown->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    shown->setGeometry(label.x() - kGap, label.y(), kGap, label.height());
}

QLabel *PreviewView::addLabel(QWidget &view, const PreviewField &field, int room) const
{
    const QFont usedFont = field.colour ? boldFont(font()) : font();
    auto *label = new QLabel(broken(field.text, usedFont, room), &view);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setFont(usedFont);
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, colourOf(field, palette()));
    label->setPalette(colours);
    label->setToolTip(field.text.left(kMostCharacters));
    return label;
}
