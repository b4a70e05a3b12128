// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/MergeInto.h"

Result<void> mergeInto(ABAddressBook &book, const std::vector<StoredRecord> &people, PersonRecord result)
{
    std::vector<RecordChange> changes;
    for (const StoredRecord &person : people)
        changes.push_back({.uid = person.uid, .before = person.record, .after = nullptr});
    changes.front().after = std::make_shared<const PersonRecord>(std::move(result));
    const QString description = QStringLiteral("merge of %1 contacts").arg(people.size());
    return book.apply(std::move(changes), makeCause(ChangeCause::Kind::Repair, description));
}
