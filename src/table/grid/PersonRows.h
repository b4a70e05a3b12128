// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "table/fields/PersonDictionary.h"

#include <QMetaType>

/// Rows are replaced, never changed, so any thread may read them.
using PersonRow = std::shared_ptr<const PersonDictionary>;
using PersonRows = std::vector<PersonRow>;

Q_DECLARE_METATYPE(PersonRows)
