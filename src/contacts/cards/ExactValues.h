// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <span>
#include <string>

// Values that no vCard line can carry as they are (an empty text that is not an absent one, a control, flags other than
// a company's) go into a card twice: as near as plain lines come to them, for every program, and exactly, in a line of
// our own. That line names what the plain lines read as; once another program has changed those, its change counts and
// the exact value does not.

/// A person's values as a card has them.
struct CardValues
{
    QString uid; ///< null when there is none
    PersonRecord record;
};

/// False where plain lines may not say all of the person exactly; it is then to be looked at what they say.
bool canSay(const QString &uid, const PersonRecord &record);
/// The lines, unfolded, that make up for how @p read, made of the plain lines, differs from @p wanted.
std::vector<std::string> exactLines(const CardValues &wanted, const CardValues &read);
/// Applies one such line, given by its parameters and its unescaped value. False when it makes no sense; a line that
/// makes sense but is out of date changes nothing.
bool applyExactValue(std::string_view property, std::string_view sum, const QString &value, CardValues &values);
