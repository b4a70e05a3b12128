// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scan/Finder.h"

/// Asks the processor to fetch what finders are going to read. People lie all over the memory, and a finder that meets
/// them unprepared waits for nearly every text; told ahead, the processor has a dozen of fetches under way at once.
/// The three steps go deeper, each needs what the one before fetched: call them for people some blocks ahead.
namespace FetchAhead {

void records(People block);
/// Names, other short texts, and the lists of entries.
void values(People block);
/// The texts in the lists of e-mail addresses and phone numbers.
void entries(People block);

} // namespace FetchAhead
