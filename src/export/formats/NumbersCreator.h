// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/DocumentExport.h"

/// Writes rows as a Numbers spreadsheet, see NumbersDocument. Any one thread.
class NumbersCreator : public DocumentCreator
{
public:
    using DocumentCreator::DocumentCreator;

    /// Returns the one new file; if it fails there is none.
    ExportReport startConvert() const;
};
