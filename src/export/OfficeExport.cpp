// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/OfficeExport.h"

#include "export/OutputFile.h"

ExportReport exportOffice(const QString &basePath, const QString &extension, const PersonRows &rows,
    const std::function<Result<void>(QIODevice &)> &write)
{
    ExportReport report;
    // Counted here, as documents walk their rows more than once.
    for (const PersonRow &row : rows) {
        for (const PersonDictionary::Entry &entry : row->entries()) {
            if (const QString *text = row->keptText(entry.field())) // dates need no repair
                safeText(*text, &report.repairs);
        }
    }
    report.take(OutputFile::write(basePath + u'.' + extension, write));
    return report;
}
