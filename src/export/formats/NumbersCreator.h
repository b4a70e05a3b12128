// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/OfficeExport.h"

/// Writes rows as a Numbers spreadsheet, see NumbersDocument. For one thread, any.
class NumbersCreator
{
public:
    explicit NumbersCreator(ExportClock clock = QDateTime::currentDateTimeUtc) : m_clock(std::move(clock)) { }

    /// @p SavePath is without the extension, which startConvert() adds.
    /// The columns are with @p isShowAllInfo those of all fields, without the fields that the rows have.
    void initWithDictionary(PersonRows rows, const QString &SavePath, bool isShowAllInfo);
    /// Names the one file, which is a new one. Where it fails there is none.
    ExportReport startConvert() const;

private:
    ExportClock m_clock;
    PersonRows m_rows;
    QString m_savePath;
    bool m_isShowAllInfo = false;
};
