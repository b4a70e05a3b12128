// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ExportReport.h"
#include "table/grid/PersonRows.h"

/// One vCard file a person, made of what the row shows; of the fields it leaves some out (nickname, department, URLs,
/// main phone, iPhone, everything Other) and files the partner as a parent. Any thread.
class ExportVCard
{
public:
    /// Writes export_0.vcf, export_1.vcf and so on into the folder, in place of what has these names. Goes on after a
    /// failure. Whether the last file was written; false without rows. @p report may be null.
    bool exportVcardWithArray(const PersonRows &rows, const QString &toPath, ExportReport *report = nullptr) const;
    /// The same for one person, to export.vcf.
    bool exportVcardWithDictionary(
        const PersonDictionary &row, const QString &toPath, ExportReport *report = nullptr) const;
    /// A new person of no address book.
    ABPersonPtr creatPersonWithDictionary(const PersonDictionary &row) const;
};
