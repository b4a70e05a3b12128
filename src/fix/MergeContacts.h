// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABAddressBook.h"
#include "fix/Finding.h"

/// A new person merged from several, in no address book. Based on their person dictionaries (merge form), so of several
/// values under one label of a source only the last counts. Single values: the last source with the field wins; notes
/// are joined, each after a line break; addresses are merged part by part; phones, e-mails and related names are sets
/// per kind, in order of first appearance; accounts and profiles are all kept. The result always has a note, phones,
/// e-mails, related names and exactly three addresses, even if empty. All else is lost: department, nickname, title,
/// web pages, iPhone and main numbers, country codes, entries with custom labels that no field shows, the picture, the
/// flags; and a mother becomes a mobile number.
ABPersonPtr mergeContacts(const QList<ABPersonPtr> &people);

/// All people in the shared address book with @p person's name key, in order, if two or more; otherwise none. Usually
/// includes @p person.
QList<ABPersonPtr> peopleNamedLike(const ABPerson &person);

/// The people that the repair merges, in order: for ShareEmail the others, even those removed since, and then the
/// person; otherwise peopleNamedLike(). Empty if the person was removed.
QList<ABPersonPtr> peopleToMerge(const Finding &finding);

/// Saves @p result as the first of @p people, keeping its uid, and removes the others, in one step of the history. On
/// an error nothing is changed. Conflict: one of them has since been changed.
Result<void> mergeInto(ABAddressBook &book, const std::vector<StoredRecord> &people, PersonRecord result);
