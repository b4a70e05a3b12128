// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

/// The property's text, or "(null)" if it is absent.
const QString &textOrNull(const PersonRecord &record, ABProperty property);

/// First name, blank, last name; an absent name is "(null)".
QString displayName(const PersonRecord &record);
/// The same without absent names; empty if both are.
QString presentNames(const PersonRecord &record);

/// First and last name, else the organization, else the first e-mail address; may be empty.
QString readableName(const PersonRecord &record);
/// @p text followed by that name in brackets, if there is one.
QString withReadableName(const QString &text, const PersonRecord &record);

/// First and last name without a blank between, an absent one as "(null)": the key for finding duplicates.
QString nameKey(const PersonRecord &record);
