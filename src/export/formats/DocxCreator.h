// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/DocumentExport.h"

/// Writes rows as a word-processing document, see DocxDocument. For one thread, any.
class DocxCreator : public DocumentCreator
{
public:
    using DocumentCreator::DocumentCreator;

    /// Always in the fixed order.
    void initWithDictionary(PersonRows rows, const QString &SavePath)
    {
        DocumentCreator::initWithDictionary(std::move(rows), SavePath, true);
    }
    /// Names the one file, which is a new one. Where it fails there is none.
    ExportReport startConvert() const;
};
