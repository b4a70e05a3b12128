// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABAddressBook.h"

/// What a restore will do, decided before anything is changed.
struct RestorePlan
{
    QString description; ///< what is restored, for the history
    std::vector<RecordChange> changes; ///< each person once
    std::vector<Ignored> ignored; ///< to be ignored too
    qint64 added = 0;
    qint64 changed = 0;
    qint64 removed = 0;
};

/// The changes that put every person back as before these causes' changes, including lines kept from cards; ids in any
/// order, duplicates ignored. Loads outside changes first.
/// Conflict: a person is not as its step left it; the text names the first such person and says how. Invalid: there is
/// nothing to restore. NotFound: the history has no such cause.
Result<RestorePlan> planRestore(ABAddressBook &book, const QStringList &causeIds);

/// The changes that make the book hold exactly @p wanted, which has each uid once; none if it already does. Additions
/// are in the order of @p wanted.
Result<RestorePlan> planReplacement(ABAddressBook &book, const std::vector<StoredRecord> &wanted);

/// Carries out a plan, as a new cause; errors as in ABAddressBook::apply(), or the people are restored, but what is to
/// be ignored could not be written. All three may take as long as the store; not for the main thread.
Result<void> restore(ABAddressBook &book, const RestorePlan &plan);
