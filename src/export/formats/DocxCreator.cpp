// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/DocxCreator.h"

#include "export/formats/DocxDocument.h"

ExportReport DocxCreator::startConvert() const
{
    const auto write = [this](QIODevice &target, TextRepairs &repairs) {
        return DocxDocument(m_clock(), m_rows).writeTo(target, repairs);
    };
    return exportDocument(m_savePath, QLatin1StringView("docx"), write);
}
