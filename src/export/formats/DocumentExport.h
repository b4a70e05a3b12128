// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ExportReport.h"
#include "table/grid/PersonRows.h"

#include <QDateTime>

#include <functional>
#include <span>

class QIODevice;

// What the writers of documents have in common.

/// Gives the moment that documents carry.
using ExportClock = std::function<QDateTime()>;

/// Says which contacts stand on further sheets than the first, where that cannot hold all; else empty.
QString furtherSheetsRemark(std::span<const PersonRow> rows, std::size_t rowsInSheet);

/// Adds @p extension to the base path and writes a new file there with @p write, whole or not at all.
/// @p write counts what it changes to make texts safe.
ExportReport exportDocument(const QString &basePath, QLatin1StringView extension,
    const std::function<Result<void>(QIODevice &, TextRepairs &)> &write);

/// What the creators of Pages, Numbers and Word documents are made of.
class DocumentCreator
{
public:
    explicit DocumentCreator(ExportClock clock = QDateTime::currentDateTimeUtc) : m_clock(std::move(clock)) { }

    /// @p SavePath is without the extension. Both show the fields that a contact has: with @p isShowAllInfo by the
    /// fixed columns of all fields, without by those that the rows have, in their order.
    void initWithDictionary(PersonRows rows, const QString &SavePath, bool isShowAllInfo);

protected:
    ExportClock m_clock;
    PersonRows m_rows;
    QString m_savePath;
    bool m_isShowAllInfo = false;
};
