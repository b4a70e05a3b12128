// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QImage>
#include <QSet>
#include <QTextDocument>

#include <memory>

class QPainter;
class QPdfWriter;

/// Makes one PDF of Markdown chapters: a title page with the table of contents, then each chapter on a page of its own.
/// Pictures wider than the page are scaled to it.
class ManualPrinter
{
public:
    ManualPrinter(QString title, QString version);

    /// Adds a chapter; paths of pictures in it are relative to the file. False, and @p error filled, when the file or
    /// one of its pictures cannot be read.
    bool addChapter(const QString &path, QString *error);
    /// False when the file cannot be written.
    bool print(const QString &path);

private:
    struct Heading
    {
        QString text;
        int level;
        int position; ///< in the document
    };

    bool loadPictures(const QString &folder, const QString &markdown, QString *error);
    void compose(const QList<int> &pagesOfHeadings);
    void fitPictures();
    void styleTables();
    void styleText();
    /// True when a heading stands alone at the end of a page; the next compose() begins a page with it.
    bool keepHeadingsWithTheirText();
    void findHeadings();
    void insertContents(const QList<int> &pagesOfHeadings);
    int pageOf(int position) const;
    void drawPage(QPainter &painter, int page, int pages) const;

    QString m_markdown; ///< of all chapters
    QHash<QString, QImage> m_pictures; ///< by the name that the text gives them
    std::unique_ptr<QTextDocument> m_document;
    QSizeF m_pageSize; ///< without the footer, in pixels
    QString m_title;
    QString m_version;
    QList<Heading> m_headings;
    QSet<qsizetype> m_onNewPage; ///< numbers of headings, from 0
};
