// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/CardLine.h"
#include "contacts/model/PersonRecord.h"

// What card lines say beyond the record. Values are UTF-8.

/// The unfolded line @p text, which replaces @p old, plus what only @p old says: parameters that do not concern the
/// value or its label, a post-office box and an extended address, units below the department.
std::string withSurplusOf(const CardLine &old, const std::string &text);

/// Whether @p line is the delivery label of the address in the line @p address.
bool isLabelOfAddress(const CardLine &line, const CardLine &address);

/// The new text to file a person by, who was filed by @p filedAs and changed from @p before to @p after: null if the
/// text was custom, empty if nothing is left to file by.
QString followingFiledAs(const QString &filedAs, const PersonRecord &before, const PersonRecord &after);
