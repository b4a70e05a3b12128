// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scan/Finder.h"

// Each finds the people it objects to, once each, in the order of the address book. "Space" is U+0020 only.

/// The note consists of one or more spaces and nothing else.
Findings peopleWithNoteOfSpaces(People people);
/// The same for the nickname.
Findings peopleWithNicknameOfSpaces(People people);
/// An e-mail address without "@" or without ".com" (compared exactly, so an address in ".org" is objected to), or a
/// phone number that holds an ASCII letter.
Findings peopleWithInvalidCharacters(People people);
