// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

/// Whether two values of a property say the same despite different spelling: case, blanks or punctuation of texts, the
/// country code of a phone number, "https://" of a web page. An empty text equals only another empty one. In doubt,
/// values differ.
bool sayTheSame(ABProperty property, const QString &a, const QString &b);

/// Whether @p whole says everything that @p part says: for dictionaries, part by part; missing or empty parts say
/// nothing.
bool isSaidBy(ABProperty property, const ABMultiValue::Value &part, const ABMultiValue::Value &whole);
