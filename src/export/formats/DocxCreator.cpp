// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/DocxCreator.h"

#include "export/formats/DocxDocument.h"

ExportReport DocxCreator::startConvert() const
{
    const auto write = [this](QIODevice &target, TextRepairs &repairs) {
        return writeDocxDocument(m_clock(), m_rows, target, repairs);
    };
    return exportDocument(m_savePath, QLatin1StringView("docx"), write);
}
