// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/DocumentExport.h"

#include "export/formats/ContactText.h"
#include "export/formats/OutputFile.h"

QString furtherSheetsRemark(std::span<const PersonRow> rows, std::size_t rowsInSheet)
{
    if (rows.size() <= rowsInSheet)
        return {};
    return QStringLiteral("a sheet holds %1 contacts; the other %2, from %3 on, are on further sheets")
        .arg(rowsInSheet)
        .arg(rows.size() - rowsInSheet)
        .arg(shortHeading(*rows[rowsInSheet]));
}

ExportReport exportDocument(const QString &basePath, QLatin1StringView extension,
    const std::function<Result<void>(QIODevice &, TextRepairs &)> &write)
{
    ExportReport report;
    const auto fill = [&write, &report](QIODevice &target) { return write(target, report.repairs); };
    report.take(OutputFile::write(basePath % u'.' % extension, fill));
    return report;
}
