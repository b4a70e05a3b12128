// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/DocumentExport.h"

/// Writes rows as a word-processing document, see DocxDocument. Any one thread.
class DocxCreator : public DocumentCreator
{
public:
    using DocumentCreator::DocumentCreator;

    /// Always in the fixed order.
    void initWithDictionary(PersonRows rows, const QString &SavePath)
    {
        DocumentCreator::initWithDictionary(std::move(rows), SavePath, true);
    }
    /// Returns the one new file; if it fails there is none.
    ExportReport startConvert() const;
};
