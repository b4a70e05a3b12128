// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"

#include <utility>
#include <vector>

/// Field labels and display texts, in a stable order; each label once.
using DisplayFields = std::vector<std::pair<QString, QString>>;

/// A person's values besides first and last name, for display. Labels are the person dictionary's, but an address is
/// one text, its parts joined by commas: the last home address under "Home Address", the last of all others, work or
/// not, under "Work Address". A date is YYYY-MM-DD.
DisplayFields analysePerson(const ABPerson &person);
