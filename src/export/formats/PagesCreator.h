// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/OfficeExport.h"

/// Writes rows as a Pages document, see PagesDocument. For one thread, any.
class PagesCreator
{
public:
    explicit PagesCreator(ExportClock clock = QDateTime::currentDateTimeUtc) : m_clock(std::move(clock)) { }

    /// @p SavePath is without the extension, which startConvert() adds.
    /// Each contact shows the fields it has: with @p isShowAllInfo in the fixed order of the columns of all fields,
    /// without in the order of the row.
    void initWithDictionary(PersonRows rows, const QString &SavePath, bool isShowAllInfo);
    /// Names the one file, which is a new one. Where it fails there is none.
    ExportReport startConvert() const;

private:
    ExportClock m_clock;
    PersonRows m_rows;
    QString m_savePath;
    bool m_isShowAllInfo = false;
};
