// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/CardLine.h"
#include "contacts/model/PersonRecord.h"

// What the lines of a card say beyond what a record holds. Values are UTF-8.

/// The unfolded line @p text, which is to replace @p old, with what only @p old says: parameters that say nothing about
/// the value or its label, a post-office box and an extended address, units of an organisation below the department.
std::string withSurplusOf(const CardLine &old, const std::string &text);

/// Whether @p line is the delivery label of the address in the line @p address.
bool isLabelOfAddress(const CardLine &line, const CardLine &address);

/// What a person who was @p before and was filed by the text @p filedAs is to be filed by with @p after: null where the
/// text was the user's own, empty where nothing is left to file by.
QString followingFiledAs(const QString &filedAs, const PersonRecord &before, const PersonRecord &after);
