// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/PreviewView.h"

#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr double kPointsOfLine = 20; // between two rows of a document
constexpr int kGap = 12; // between two texts of a row
constexpr int kRingWidth = 2; // of the focus

/// The ground of previews: a quiet pattern over the window's base colour.
class DocumentView : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), palette().color(QPalette::Base));
        painter.setOpacity(0.06);
        painter.drawTiledPixmap(rect(), QPixmap(QStringLiteral(":/art/color.png")));
    }
};

QColor colourOf(const PreviewField &field, const QPalette &palette)
{
    if (!field.colour)
        return palette.color(QPalette::Text);
    if (field.colour->ink == PreviewColour::Ink::Red)
        return palette.color(QPalette::BrightText);
    // Thin black would fall below a readable contrast, and on dark ground it would vanish: the palette's quiet text
    // colour says the same.
    return palette.color(QPalette::PlaceholderText);
}

/// A row has room for one line: of several, the first, and a sign that there are more.
QString lineOf(const QString &text)
{
    static const QRegularExpression lineBreak(QStringLiteral("[\\r\\n\\x{2028}\\x{2029}]"));
    const QString whole = text.trimmed();
    const qsizetype end = whole.indexOf(lineBreak);
    return end < 0 ? text : whole.left(end) % QStringLiteral(" …");
}

/// How far the columns must move apart so that no text runs into the one beside it.
double widthScale(const std::vector<PreviewField> &fieldsInReadingOrder, const QFontMetrics &metrics)
{
    double scale = 1;
    for (std::size_t i = 1; i < fieldsInReadingOrder.size(); ++i) {
        const PreviewField &left = fieldsInReadingOrder[i - 1];
        const PreviewField &right = fieldsInReadingOrder[i];
        const int room = right.frame.x() - left.frame.x();
        if (left.frame.y() == right.frame.y() && room > 0)
            scale = std::max(scale, double(metrics.horizontalAdvance(lineOf(left.text)) + kGap) / room);
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

void PreviewView::layOut()
{
    auto *view = new DocumentView;
    QFont bold = font();
    bold.setBold(true);
    std::vector<PreviewField> fields = m_document.fields;
    std::ranges::stable_sort(fields, [](const PreviewField &a, const PreviewField &b) {
        return std::pair(-a.frame.y(), a.frame.x()) < std::pair(-b.frame.y(), b.frame.x());
    });
    const double down = std::max(1.0, QFontMetrics(bold).height() * 1.15 / kPointsOfLine);
    const double across = std::max(down, widthScale(fields, QFontMetrics(bold)));
    const auto toX = [across](int points) { return qRound(points * across); };
    const auto toY = [down](int points) { return qRound(points * down); };
    view->resize(0, toY(m_document.size.height())); // as wide as the texts need

    QStringList texts;
    for (const PreviewField &field : fields) {
        auto *label = new QLabel(lineOf(field.text), view);
        label->setTextFormat(Qt::PlainText);
        if (field.colour)
            label->setFont(bold);
        QPalette colours = palette();
        colours.setColor(QPalette::WindowText, colourOf(field, palette()));
        label->setPalette(colours);
        const QRect &frame = field.frame;
        const int top = m_document.size.height() - frame.y() - frame.height();
        label->setGeometry(toX(frame.x()), toY(top), label->sizeHint().width(), toY(frame.height()));
        label->setToolTip(field.text);
        view->resize(std::max(view->width(), label->geometry().right() + 1), view->height());
        texts += field.text;
    }
    m_spoken = texts.join(u' ');
    setAccessibleDescription(m_spoken);
    view->setMinimumSize(view->size());
    setWidget(view);
    setWidgetResizable(true); // the ground fills the area, the texts keep their places
    view->show();
}
