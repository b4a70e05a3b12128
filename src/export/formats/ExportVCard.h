// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ExportReport.h"
#include "table/grid/PersonRows.h"

/// One vCard file per person, from the fields of the row; leaves some out (nickname, department, URLs, main phone,
/// iPhone, all Other) and writes the partner as a parent. Any thread.
class ExportVCard
{
public:
    /// Writes export_0.vcf, export_1.vcf and so on into the folder, replacing existing files. Continues after a
    /// failure. Returns whether the last file was written; false without rows. @p report may be null.
    bool exportVcardWithArray(const PersonRows &rows, const QString &toPath, ExportReport *report = nullptr) const;
    /// The same for one person, to export.vcf.
    bool exportVcardWithDictionary(
        const PersonDictionary &row, const QString &toPath, ExportReport *report = nullptr) const;
    /// A new person in no address book.
    ABPersonPtr creatPersonWithDictionary(const PersonDictionary &row) const;
};
