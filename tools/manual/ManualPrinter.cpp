// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ManualPrinter.h"

#include <QAbstractTextDocumentLayout>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextFrame>
#include <QTextList>
#include <QTextTable>
#include <QUrl>

#include <array>

namespace {

constexpr int kResolution = 96; // pixels of the document an inch; pictures keep all of theirs
constexpr int kTextSize = 13;
constexpr int kFooterHeight = 30;
constexpr int kContentsLevels = 2;
constexpr int kTabRoom = 8; // a right tab at the very edge would go to the next line
constexpr QSizeF kMargins(18, 16); // millimetres
const QColor kAccent(0x1a, 0x5b, 0x73);
const QColor kLine(0xc9, 0xc6, 0xbf);

} // namespace

ManualPrinter::ManualPrinter(QString title, QString version) : m_title(std::move(title)), m_version(std::move(version))
{ }

bool ManualPrinter::addChapter(const QString &path, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("%1: %2").arg(path, file.errorString());
        return false;
    }
    const QString markdown = QString::fromUtf8(file.readAll());
    if (!loadPictures(QFileInfo(path).path(), markdown, error))
        return false;
    m_markdown += markdown + QStringLiteral("\n\n");
    return true;
}

bool ManualPrinter::loadPictures(const QString &folder, const QString &markdown, QString *error)
{
    static const QRegularExpression picture(QStringLiteral("!\\[[^\\]]*\\]\\(([^)]+)\\)"));
    auto found = picture.globalMatch(markdown);
    while (found.hasNext()) {
        const QString name = found.next().captured(1);
        const QImage image(QDir(folder).filePath(name));
        if (image.isNull()) {
            *error = QStringLiteral("%1: no such picture: %2").arg(folder, name);
            return false;
        }
        m_pictures.insert(name, image);
    }
    return true;
}

bool ManualPrinter::print(const QString &path)
{
    QPdfWriter writer(path);
    writer.setTitle(m_title);
    writer.setCreator(m_title);
    writer.setResolution(kResolution);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(
        QMarginsF(kMargins.width(), kMargins.height(), kMargins.width(), kMargins.height()), QPageLayout::Millimeter);
    m_pageSize = QSizeF(writer.width(), writer.height() - kFooterHeight);
    QPainter painter;
    if (!painter.begin(&writer))
        return false;
    do
        compose({});
    while (keepHeadingsWithTheirText());
    QList<int> pagesOfHeadings; // a number does not change how its line breaks, so the pages stay as they are
    for (const Heading &heading : std::as_const(m_headings))
        pagesOfHeadings += pageOf(heading.position);
    compose(pagesOfHeadings);

    const int pages = m_document->pageCount();
    for (int page = 0; page < pages; ++page) {
        if (page > 0 && !writer.newPage())
            return false;
        drawPage(painter, page, pages);
    }
    return painter.end() && QFileInfo(path).size() > 0;
}

void ManualPrinter::compose(const QList<int> &pagesOfHeadings)
{
    // All is in place before the first layout: one that has to follow later changes puts blocks on top of each other.
    m_document = std::make_unique<QTextDocument>();
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(kTextSize);
    m_document->setDefaultFont(font);
    m_document->setDocumentMargin(0);
    m_document->setMarkdown(m_markdown, QTextDocument::MarkdownDialectGitHub);
    // setMarkdown() has forgotten all resources.
    for (auto picture = m_pictures.begin(); picture != m_pictures.end(); ++picture)
        m_document->addResource(QTextDocument::ImageResource, QUrl(picture.key()), picture.value());
    fitPictures();
    styleTables();
    styleText();
    findHeadings();
    insertContents(pagesOfHeadings);
    m_document->setPageSize(m_pageSize);
}

void ManualPrinter::fitPictures()
{
    const qreal width = m_pageSize.width();
    for (QTextBlock block = m_document->begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextFragment fragment = part.fragment();
            QTextImageFormat format = fragment.charFormat().toImageFormat();
            if (!format.isValid())
                continue;
            const QSizeF size = m_pictures.value(format.name()).size();
            const qreal shown = std::min(width, size.width());
            format.setWidth(shown);
            format.setHeight(shown * size.height() / size.width());
            QTextCursor cursor(m_document.get());
            cursor.setPosition(fragment.position());
            cursor.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
            cursor.setCharFormat(format);
            break; // a picture stands alone in its paragraph; the change has ended the iteration
        }
    }
}

void ManualPrinter::styleTables()
{
    for (QTextFrame *frame : m_document->rootFrame()->childFrames()) {
        auto *table = qobject_cast<QTextTable *>(frame);
        if (!table)
            continue;
        QTextTableFormat format = table->format();
        format.setBorderCollapse(true);
        format.setBorder(0.5);
        format.setBorderBrush(kLine);
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setCellPadding(4);
        format.setTopMargin(4);
        format.setBottomMargin(10);
        format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
        table->setFormat(format);
    }
}

void ManualPrinter::findHeadings()
{
    m_headings.clear();
    for (QTextBlock block = m_document->begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        if (level >= 1 && level <= kContentsLevels)
            m_headings += {block.text(), level, block.position()};
    }
}

void ManualPrinter::insertContents(const QList<int> &pagesOfHeadings)
{
    QTextCursor cursor(m_document.get());
    cursor.insertBlock(); // the first chapter's heading stays what it is behind it
    cursor.movePosition(QTextCursor::Start);
    cursor.setBlockFormat({});
    QTextCharFormat text;
    text.setFontPointSize(26);
    text.setForeground(kAccent);
    cursor.insertText(m_title, text);
    QTextBlockFormat line;
    line.setBottomMargin(18);
    cursor.insertBlock(line);
    text.clearForeground();
    text.setFontPointSize(11);
    cursor.insertText(m_version, text);
    auto page = pagesOfHeadings.begin();
    for (const Heading &heading : std::as_const(m_headings)) {
        QTextBlockFormat entry;
        entry.setIndent(heading.level - 1);
        entry.setTopMargin(heading.level == 1 ? 5 : 0);
        const qreal right = m_pageSize.width() - entry.indent() * m_document->indentWidth() - kTabRoom;
        entry.setTabPositions({QTextOption::Tab(right, QTextOption::RightTab)});
        text.setFontPointSize(heading.level == 1 ? 10 : 9);
        text.setFontWeight(heading.level == 1 ? QFont::Bold : QFont::Normal);
        cursor.insertBlock(entry);
        cursor.insertText(heading.text + u'\t', text);
        if (page != pagesOfHeadings.end())
            cursor.insertText(QString::number(*page++), text);
    }
    const int shift = cursor.position() + 1;
    for (Heading &heading : m_headings)
        heading.position += shift;
}

void ManualPrinter::styleText()
{
    constexpr std::array sizes{18.0, 13.0, 10.5};
    qsizetype number = 0; // of the heading
    for (QTextBlock block = m_document->begin(); block.isValid(); block = block.next()) {
        QTextBlockFormat format = block.blockFormat();
        QTextCursor cursor(block);
        const int level = format.headingLevel();
        if (level < 1 || level > int(sizes.size())) {
            const bool isPlain = !block.textList() && !cursor.currentTable() && !block.text().isEmpty();
            format.setTopMargin(isPlain ? 6 : 1);
            cursor.setBlockFormat(format);
            continue;
        }
        if (level == 1 || m_onNewPage.contains(number))
            format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        if (level <= kContentsLevels)
            ++number;
        format.setTopMargin(level == 1 ? 0 : 14);
        format.setBottomMargin(5);
        cursor.setBlockFormat(format);
        cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        QTextCharFormat text;
        text.setFontPointSize(sizes[std::size_t(level - 1)]);
        text.setForeground(kAccent);
        cursor.mergeCharFormat(text);
    }
}

bool ManualPrinter::keepHeadingsWithTheirText()
{
    for (qsizetype number = 0; number < m_headings.size(); ++number) {
        const QTextBlock heading = m_document->findBlock(m_headings[number].position);
        const QRectF next = m_document->documentLayout()->blockBoundingRect(heading.next());
        const int endOfNext = int(next.bottom() / m_pageSize.height()) + 1;
        if (pageOf(heading.position()) == endOfNext || m_onNewPage.contains(number))
            continue;
        m_onNewPage.insert(number);
        return true;
    }
    return false;
}

int ManualPrinter::pageOf(int position) const
{
    const QRectF place = m_document->documentLayout()->blockBoundingRect(m_document->findBlock(position));
    return int(place.center().y() / m_pageSize.height()) + 1;
}

void ManualPrinter::drawPage(QPainter &painter, int page, int pages) const
{
    const QSizeF size = m_pageSize;
    const QRectF view(0, page * size.height(), size.width(), size.height());
    painter.save();
    painter.translate(0, -view.top());
    painter.setClipRect(view.adjusted(0, 0, 0, -2)); // no tips of the next page's first letters
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = view;
    context.palette.setColor(QPalette::Text, Qt::black);
    m_document->documentLayout()->draw(&painter, context);
    painter.restore();
    painter.setFont(m_document->defaultFont());
    painter.setPen(Qt::darkGray);
    const QRectF footer(0, size.height(), size.width(), kFooterHeight);
    painter.drawText(footer, Qt::AlignBottom | Qt::AlignLeft, m_title);
    painter.drawText(footer, Qt::AlignBottom | Qt::AlignRight, QStringLiteral("%1 / %2").arg(page + 1).arg(pages));
}
