// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fix/Finding.h"

/// One new person of several, belonging to no address book. It reads their person dictionaries (the merge form), so of
/// several values under one label of a source only the last one reaches it. Single values: the last source that has
/// the field wins; notes are joined, each behind a line break; address parts are joined part by part; phones, e-mails
/// and related names are sets of each kind, in the order in which they first appear; accounts and profiles are all
/// kept. The result always has a note, phones, e-mails, related names and exactly three addresses, be they empty. What
/// no rule takes over is lost: department, nickname, title, web pages, iPhone and main numbers, country codes, entries
/// with labels of the user's own that no field shows, the picture, the flags; and a mother becomes a mobile number.
ABPersonPtr mergeContacts(const QList<ABPersonPtr> &people);

/// The people whom the repair makes one, in the order of the merge: for ShareEmail the others, even those who were
/// removed since, and then the person; otherwise peopleNamedLike(). Empty where the person itself was removed.
QList<ABPersonPtr> peopleToMerge(const Finding &finding);
