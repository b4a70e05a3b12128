// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"
#include "contacts/cards/RecordJson.h"

#include <QSet>

ExitStatus runPeople(const PeopleOptions &options, const CommandContext &context)
{
    const auto book = context.openAddressBook();
    if (!book)
        return ExitStatus::Refused;
    const QStringList uids = textsOf(options.uids);
    QSet<QString> missing(uids.begin(), uids.end());
    const PeopleSnapshot everybody = book->snapshot();
    for (const auto &[person, record] : *everybody) {
        if (!uids.isEmpty() && !missing.remove(person->uniqueId()))
            continue;
        if (options.format == "vcard")
            context.console.out << person->vCardRepresentation().toStdString();
        else
            context.console.out << recordToJson(person->uniqueId(), *record) << '\n';
    }
    const bool allFound = missing.isEmpty();
    for (const QString &uid : uids) {
        if (missing.remove(uid))
            context.reportMissing(uid);
    }
    return allFound ? ExitStatus::Done : ExitStatus::Refused;
}
