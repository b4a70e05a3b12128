// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTextDocument>

class QPainter;
class QPdfWriter;

/// Makes one PDF of Markdown chapters: a title page with the table of contents, then each chapter on a page of its own.
/// Pictures wider than the page are scaled to it.
class ManualPrinter
{
public:
    explicit ManualPrinter(const QString &title, const QString &version);

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
    void fitPictures();
    void styleTables();
    void styleHeadings();
    void findHeadings();
    void insertContents();
    void fillInPageNumbers();
    int pageOf(int position) const;
    void drawPage(QPainter &painter, int page, int pages) const;

    QTextDocument m_document;
    QString m_title;
    QString m_version;
    QList<Heading> m_headings;
};
