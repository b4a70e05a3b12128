// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "table/fields/PersonDictionary.h"

#include <QMetaType>

/// A row is replaced as a whole and never changed, so rows may be read from any thread.
using PersonRow = std::shared_ptr<const PersonDictionary>;
using PersonRows = std::vector<PersonRow>;

Q_DECLARE_METATYPE(PersonRows)
