// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"
#include "fix/Comparison.h"
#include "fix/LostValues.h"
#include "fix/MergeContacts.h"

ExitStatus runMerge(const MergeOptions &options, const CommandContext &context)
{
    if (options.uids.size() < 2)
        return context.refuse(QStringLiteral("merge: name two contacts or more"), ExitStatus::Usage);
    const auto book = context.openAddressBookForChange();
    if (!book)
        return ExitStatus::Refused;
    const QList<ABPersonPtr> people = peopleNamed(textsOf(options.uids), *book, context);
    if (people.isEmpty())
        return ExitStatus::Refused;
    std::vector<StoredRecord> stored;
    for (const auto &person : people)
        stored.push_back({person->uniqueId(), person->record()});
    Comparison comparison(recordsOf(people));
    comparison.keepEverything();
    const PersonRecord result = options.asRepair ? *mergeContacts(people)->record() : comparison.result();
    if (const auto merged = mergeInto(*book, stored, result); !merged)
        return context.refuse(people.first()->uniqueId() % QStringLiteral(": not merged: ") % merged.error().text);
    context.console.out << onOneLine(people.first()->uniqueId()) << '\n';
    return ExitStatus::Done;
}
