// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ExportReport.h"
#include "table/grid/PersonRows.h"

#include <QDateTime>

#include <functional>

/// The time stored in documents.
using ExportClock = std::function<QDateTime()>;

/// Base of the creators of Pages, Numbers and Word documents.
class DocumentCreator
{
public:
    explicit DocumentCreator(ExportClock clock = QDateTime::currentDateTimeUtc) : m_clock(std::move(clock)) { }

    /// @p SavePath has no extension. Each contact's fields are shown: with @p isShowAllInfo in the fixed order of all
    /// fields, otherwise in the order of the rows.
    void initWithDictionary(PersonRows rows, const QString &SavePath, bool isShowAllInfo);

protected:
    ExportClock m_clock;
    PersonRows m_rows;
    QString m_savePath;
    bool m_isShowAllInfo = false;
};

/// Writes rows as a Pages document, see PagesDocument. Any one thread, as the others.
class PagesCreator : public DocumentCreator
{
public:
    using DocumentCreator::DocumentCreator;

    /// Returns the one new file; if it fails there is none.
    ExportReport startConvert() const;
};

/// Writes rows as a Numbers spreadsheet, see NumbersDocument.
class NumbersCreator : public DocumentCreator
{
public:
    using DocumentCreator::DocumentCreator;

    ExportReport startConvert() const; ///< as above
};

/// Writes rows as a word-processing document, see DocxDocument.
class DocxCreator : public DocumentCreator
{
public:
    using DocumentCreator::DocumentCreator;

    /// Always in the fixed order.
    void initWithDictionary(PersonRows rows, const QString &SavePath)
    {
        DocumentCreator::initWithDictionary(std::move(rows), SavePath, true);
    }
    ExportReport startConvert() const; ///< as above
};
