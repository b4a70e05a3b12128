// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ExportReport.h"
#include "table/grid/PersonRows.h"

#include <QDateTime>

#include <functional>
#include <span>

class QIODevice;

// Shared by the writers of documents.

/// The time stored in documents.
using ExportClock = std::function<QDateTime()>;

/// Says which contacts are on further sheets; empty if one sheet holds all.
QString furtherSheetsRemark(std::span<const PersonRow> rows, std::size_t rowsInSheet);

/// Writes a new file at the base path with @p extension, completely or not at all, using @p write, which counts the
/// changes that make texts safe.
ExportReport exportDocument(const QString &basePath, QLatin1StringView extension,
    const std::function<Result<void>(QIODevice &, TextRepairs &)> &write);

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
