// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <span>
#include <string>

// Values that vCard lines cannot express (an empty but not absent text, a control character, flags other than a
// company's) are written twice: approximately in plain lines, for every program, and exactly in a private line. That
// line names what the plain lines say; once another program has changed those, its change counts and the exact value is
// ignored.

struct CardValues
{
    QString uid; ///< null when there is none
    PersonRecord record;
};

/// False if kept lines may change the meaning of the others, or there are properties without a line.
bool isSafe(const PersonRecord &record);
/// The unfolded lines that make up for the difference between @p read, the meaning of the plain lines, and @p wanted.
std::vector<std::string> exactLines(const CardValues &wanted, const CardValues &read);
/// Applies such a line, given its parameters and unescaped value. False if it is invalid; a valid but outdated line
/// changes nothing.
bool applyExactValue(std::string_view property, std::string_view sum, const QString &value, CardValues &values);
