// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "table/grid/PersonRows.h"

class LoadContactsViewController;

/// Exports rows of the contact table; the caller sets all three, then starts.
class RowExporter
{
public:
    virtual ~RowExporter() = default;

    /// For the columns that are shown and, when everybody is exported, the rows. Must outlive the export.
    virtual void setLoadContactsViewController(const LoadContactsViewController *controller) = 0;
    virtual void setIsExportAllPeople(bool all) = 0;
    virtual void setExportArray(PersonRows rows) = 0;
    /// Asks the user where to, and returns before the files are written.
    virtual void startExport() = 0;
};
