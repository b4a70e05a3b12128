// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

/// The text of a property as it is written where a text must stand: "(null)" when it is absent.
const QString &textOrNull(const PersonRecord &record, ABProperty property);

/// First name, a blank, last name; an absent name is written "(null)".
QString displayName(const PersonRecord &record);
/// The same without the absent ones; empty where both are.
QString presentNames(const PersonRecord &record);

/// A name to tell a person by: first and last name, else the organization, else the first e-mail address; may be empty.
QString readableName(const PersonRecord &record);
/// @p text with that name behind it in brackets, where there is one.
QString withReadableName(const QString &text, const PersonRecord &record);

/// First and last name back to back, without a blank, an absent one as "(null)": what duplicates are told by.
QString nameKey(const PersonRecord &record);
/// The same as nameKey(record) == key, without making a text.
bool hasNameKey(const PersonRecord &record, const QString &key);
