// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/PlacesLabel.h"

#include <QEvent>

namespace {

constexpr std::size_t kMostPlaces = 4; // or the preview would be out of view
constexpr qsizetype kMostLetters = 300;

QString htmlOf(const ProblemPlace &place, const QString &red)
{
    QString html = place.title.toHtmlEscaped() % QStringLiteral(": ");
    const qsizetype end = std::min(place.text.size(), kMostLetters);
    for (qsizetype from = 0, to = 0; from < end; from = to) {
        const bool isWrong = place.wrong.contains(from);
        while (to < end && place.wrong.contains(to) == isWrong)
            ++to;
        QString part = place.text.sliced(from, to - from).toHtmlEscaped();
        if (isWrong)
            part = QStringLiteral("<b><u style=\"color:%1\">%2</u></b>").arg(red, part.replace(u' ', u'\u2423'));
        html += part;
    }
    if (place.text.size() > kMostLetters)
        html += u'\u2026';
    if (!place.remark.isEmpty())
        html += QStringLiteral(" <span style=\"color:%1\">%2</span>").arg(red, place.remark.toHtmlEscaped());
    return html;
}

QString wordsOf(const ProblemPlace &place)
{
    QStringList wrong;
    for (qsizetype from = 0, to = 0; from < place.text.size(); from = to) {
        const bool isWrong = place.wrong.contains(from);
        const bool isBlank = place.text[from] == u' ';
        while (to < place.text.size() && place.wrong.contains(to) == isWrong && (place.text[to] == u' ') == isBlank)
            ++to;
        const QString part = isBlank ? PlacesLabel::tr("a blank") : place.text.sliced(from, to - from);
        if (isWrong && !wrong.contains(part))
            wrong += part;
    }
    QString words = QString(place.text % u' ' % place.remark).simplified();
    if (!wrong.isEmpty())
        words += PlacesLabel::tr("; wrong: %1").arg(wrong.join(QStringLiteral(", ")));
    return place.title % QStringLiteral(": ") % words;
}

} // namespace

PlacesLabel::PlacesLabel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::RichText);
    setWordWrap(true);
    hide();
}

void PlacesLabel::setPlaces(std::vector<ProblemPlace> places)
{
    m_places = std::move(places);
    write();
    setVisible(!m_places.empty());
}

void PlacesLabel::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange)
        write();
    QLabel::changeEvent(event);
}

void PlacesLabel::write()
{
    QStringList lines;
    QStringList words;
    for (std::size_t i = 0; i < std::min(m_places.size(), kMostPlaces); ++i) {
        lines += htmlOf(m_places[i], palette().color(QPalette::BrightText).name());
        words += wordsOf(m_places[i]);
    }
    if (m_places.size() > kMostPlaces)
        lines += tr("and %1 more").arg(m_places.size() - kMostPlaces);
    setText(QStringLiteral("<p style=\"white-space:pre-wrap\">%1</p>").arg(lines.join(QStringLiteral("<br/>"))));
    setAccessibleName(words.join(QStringLiteral("; ")));
}
