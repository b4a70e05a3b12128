// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABAddressBook.h"

/// What a restore is going to do, decided before anything is changed.
struct RestorePlan
{
    QString description; ///< what is restored, for the history
    std::vector<RecordChange> changes; ///< each person once
    qint64 added = 0;
    qint64 changed = 0;
    qint64 removed = 0;
};

/// What has to be done so that everybody is as before these causes' changes; in any order, repeated ids count once.
/// Every person is put back as it was before the step, with the lines kept from its card. Takes in what others changed
/// first.
/// Conflict: a person is not as its step left it, whoever changed it; the text names the first such person and says
/// how. Invalid: there is nothing to put back. NotFound: the history knows no such cause.
Result<RestorePlan> planRestore(ABAddressBook &book, const QStringList &causeIds);

/// The same for holding exactly @p wanted, which has each uid once. No changes where that is so already. Additions come
/// in the order of @p wanted.
Result<RestorePlan> planReplacement(ABAddressBook &book, const std::vector<StoredRecord> &wanted);

/// Carries out a plan, as a new cause; errors as those of ABAddressBook::apply(). All three may take as long as
/// the store; none belongs on a main thread.
Result<void> restore(ABAddressBook &book, const RestorePlan &plan);
