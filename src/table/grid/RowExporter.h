// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "table/grid/PersonRows.h"

class LoadContactsViewController;

/// Exports rows of the contact table; set all three, then start.
class RowExporter
{
public:
    virtual ~RowExporter() = default;

    /// Provides the visible columns and, when everyone is exported, the rows. Must outlive the export.
    virtual void setLoadContactsViewController(const LoadContactsViewController *controller) = 0;
    virtual void setIsExportAllPeople(bool all) = 0;
    virtual void setExportArray(PersonRows rows) = 0;
    /// Asks the user for the target; returns before the files are written.
    virtual void startExport() = 0;
};
