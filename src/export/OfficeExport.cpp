// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/OfficeExport.h"

#include "export/OutputFile.h"

ExportReport exportOffice(const QString &basePath, const QString &extension,
    const std::function<Result<void>(QIODevice &, TextRepairs &)> &write)
{
    ExportReport report;
    const auto fill = [&write, &report](QIODevice &target) { return write(target, report.repairs); };
    report.take(OutputFile::write(basePath + u'.' + extension, fill));
    return report;
}
