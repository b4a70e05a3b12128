// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

/// Whether two values of a property say the same, however they are written: texts with other capitals, blanks or
/// punctuation, a phone number with or without its country code, a web page with or without "https://". An empty text
/// says nothing and so the same as another empty one only. Cautious: what may be two things counts as two.
bool sayTheSame(ABProperty property, const QString &a, const QString &b);

/// Whether everything that @p part says is said by @p whole too: for dictionaries, part by part; a part that is missing
/// or empty says nothing.
bool isSaidBy(ABProperty property, const ABMultiValue::Value &part, const ABMultiValue::Value &whole);
