// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/stores/sqlite/BackupFile.h"

/// What could be read of a damaged address book file.
struct Salvaged : BookContents
{
    qint64 incomplete = 0; ///< people who lack something or a matching digest
    qint64 lost = 0; ///< other people who were in the file
    bool isLostExact = false; ///< else there may be more of them
};

/// Reads person by person, skipping damage, from a private copy.
/// Invalid: no one could be read.
Result<Salvaged> salvagePeople(const QString &path);
