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
#include <QTextDocumentFragment>
#include <QTextFrame>
#include <QTextTable>
#include <QUrl>

#include <array>

namespace {

constexpr int kResolution = 96; // pixels of the document an inch; pictures keep all of theirs
constexpr int kFooterHeight = 30;
constexpr int kContentsLevels = 2;
constexpr QSizeF kMargins(18, 16); // millimetres
const QColor kAccent(0x1a, 0x5b, 0x73);
const QColor kLine(0xc9, 0xc6, 0xbf);

} // namespace

ManualPrinter::ManualPrinter(const QString &title, const QString &version) : m_title(title), m_version(version)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSizeF(9.5);
    m_document.setDefaultFont(font);
    m_document.setDocumentMargin(0);
}

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
    QTextDocument chapter;
    chapter.setDefaultFont(m_document.defaultFont());
    chapter.setMarkdown(markdown, QTextDocument::MarkdownDialectGitHub);
    QTextCursor end(&m_document);
    end.movePosition(QTextCursor::End);
    QTextBlockFormat newPage;
    newPage.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    end.insertBlock(newPage);
    end.insertFragment(QTextDocumentFragment(&chapter));
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
        m_document.addResource(QTextDocument::ImageResource, QUrl(name), image);
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
    m_document.documentLayout()->setPaintDevice(&writer);
    m_document.setPageSize(QSizeF(writer.width(), writer.height() - kFooterHeight));
    fitPictures();
    styleTables();
    findHeadings();
    insertContents();
    styleHeadings();
    fillInPageNumbers();

    QPainter painter;
    if (!painter.begin(&writer))
        return false;
    const int pages = m_document.pageCount();
    for (int page = 0; page < pages; ++page) {
        if (page > 0 && !writer.newPage())
            return false;
        drawPage(painter, page, pages);
    }
    return painter.end() && QFileInfo(path).size() > 0;
}

void ManualPrinter::fitPictures()
{
    const qreal width = m_document.pageSize().width();
    for (QTextBlock block = m_document.begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextFragment fragment = part.fragment();
            QTextImageFormat format = fragment.charFormat().toImageFormat();
            if (!format.isValid())
                continue;
            const QVariant resource = m_document.resource(QTextDocument::ImageResource, QUrl(format.name()));
            const QSizeF size = resource.value<QImage>().size();
            const qreal shown = std::min(width, size.width());
            format.setWidth(shown);
            format.setHeight(shown * size.height() / size.width());
            QTextCursor cursor(&m_document);
            cursor.setPosition(fragment.position());
            cursor.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
            cursor.setCharFormat(format);
            break; // a picture stands alone in its paragraph; the change has ended the iteration
        }
    }
}

void ManualPrinter::styleTables()
{
    for (QTextFrame *frame : m_document.rootFrame()->childFrames()) {
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
    for (QTextBlock block = m_document.begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        if (level >= 1 && level <= kContentsLevels)
            m_headings += {block.text(), level, block.position()};
    }
}

void ManualPrinter::insertContents()
{
    QTextCursor cursor(&m_document);
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
    for (const Heading &heading : std::as_const(m_headings)) {
        QTextBlockFormat entry;
        entry.setIndent(heading.level - 1);
        entry.setTopMargin(heading.level == 1 ? 5 : 0);
        entry.setTabPositions({QTextOption::Tab(m_document.pageSize().width() - 1, QTextOption::RightTab)});
        text.setFontPointSize(heading.level == 1 ? 10 : 9);
        text.setFontWeight(heading.level == 1 ? QFont::Bold : QFont::Normal);
        cursor.insertBlock(entry);
        cursor.insertText(heading.text + u'\t', text); // the number comes when the pages are known
    }
    const int shift = cursor.position();
    for (Heading &heading : m_headings)
        heading.position += shift;
}

void ManualPrinter::styleHeadings()
{
    constexpr std::array sizes{18.0, 13.0, 10.5};
    for (QTextBlock block = m_document.begin(); block.isValid(); block = block.next()) {
        QTextBlockFormat format = block.blockFormat();
        const int level = format.headingLevel();
        if (level < 1 || level > int(sizes.size()))
            continue;
        QTextCursor cursor(block);
        format.setTopMargin(level == 1 ? 0 : 14);
        format.setBottomMargin(5);
        cursor.setBlockFormat(format);
        cursor.select(QTextCursor::BlockUnderCursor);
        QTextCharFormat text;
        text.setFontPointSize(sizes[std::size_t(level - 1)]);
        text.setForeground(kAccent);
        cursor.mergeCharFormat(text);
    }
}

int ManualPrinter::pageOf(int position) const
{
    const QRectF place = m_document.documentLayout()->blockBoundingRect(m_document.findBlock(position));
    return int(place.center().y() / m_document.pageSize().height()) + 1;
}

void ManualPrinter::fillInPageNumbers()
{
    // A number does not change how its line breaks, so the pages stay as they are.
    QList<int> pages;
    for (const Heading &heading : std::as_const(m_headings))
        pages += pageOf(heading.position);
    QTextBlock entry = m_document.begin().next().next();
    for (const int page : std::as_const(pages)) {
        QTextCursor cursor(entry);
        cursor.movePosition(QTextCursor::EndOfBlock);
        cursor.insertText(QString::number(page));
        entry = entry.next();
    }
}

void ManualPrinter::drawPage(QPainter &painter, int page, int pages) const
{
    const QSizeF size = m_document.pageSize();
    const QRectF view(0, page * size.height(), size.width(), size.height());
    painter.save();
    painter.translate(0, -view.top());
    painter.setClipRect(view);
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = view;
    context.palette.setColor(QPalette::Text, Qt::black);
    m_document.documentLayout()->draw(&painter, context);
    painter.restore();
    painter.setFont(m_document.defaultFont());
    painter.setPen(Qt::darkGray);
    const QRectF footer(0, size.height(), size.width(), kFooterHeight);
    painter.drawText(footer, Qt::AlignBottom | Qt::AlignLeft, m_title);
    painter.drawText(footer, Qt::AlignBottom | Qt::AlignRight, QStringLiteral("%1 / %2").arg(page + 1).arg(pages));
}
