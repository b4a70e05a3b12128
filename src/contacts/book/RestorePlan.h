// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/AddressBookStore.h"
#include "contacts/book/ChangeHistory.h"

#include <functional>

/// What a restore is going to do, decided before anything is changed.
struct RestorePlan
{
    QString description; ///< what is restored, for the history
    std::vector<RecordChange> changes; ///< each person once
    qint64 added = 0;
    qint64 changed = 0;
    qint64 removed = 0;
};

/// The record that the address book holds of a uid; null for none.
using CurrentRecord = std::function<PersonRecordPtr(const QString &uid)>;
/// Whether two records count as the same.
using SameRecord = std::function<bool(const PersonRecord &a, const PersonRecord &b)>;

/// Takes @p steps back, the first one first: newest first is the order that works. Every person is put back as it was
/// before the step, with the lines kept from its card.
/// Conflict: a person is not as its step left it, by whosever deed; the text names the first such person and says how.
/// Invalid: there is nothing to put back.
Result<RestorePlan> planRestore(
    const std::vector<ChangeStep> &steps, const CurrentRecord &current, const SameRecord &same);

/// Makes @p current what @p wanted is; both hold each uid once. No changes where they are the same already.
/// Additions come in the order of @p wanted.
RestorePlan planReplacement(
    const std::vector<StoredRecord> &current, const std::vector<StoredRecord> &wanted, const SameRecord &same);
