// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "table/fields/PersonDictionary.h"

#include <QMetaType>

#include <span>

/// A row is replaced as a whole and never changed, so rows may be read from any thread.
using PersonRow = std::shared_ptr<const PersonDictionary>;
using PersonRows = std::vector<PersonRow>;

/// Tells the processor which memory the rows behind number @p current will be read from. Rows, texts and characters
/// lie all over the memory; whoever calls this before each row seldom waits for them.
void fetchAhead(std::span<const PersonRow> rows, std::size_t current);

Q_DECLARE_METATYPE(PersonRows)
