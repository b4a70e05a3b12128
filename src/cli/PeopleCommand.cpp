// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"

#include "contacts/cards/RecordJson.h"
#include "contacts/model/Utf8Text.h"

#include <QSet>

ExitStatus runPeople(const PeopleOptions &options, const CommandContext &context)
{
    const auto book = context.openAddressBook();
    if (!book)
        return ExitStatus::Refused;
    QSet<QString> wanted;
    for (const auto &uid : options.uids)
        wanted.insert(textOfUtf8(uid));
    QSet<QString> missing = wanted;
    const PeopleSnapshot everybody = book->snapshot();
    for (const auto &[person, record] : *everybody) {
        if (!wanted.isEmpty() && !wanted.contains(person->uniqueId()))
            continue;
        missing.remove(person->uniqueId());
        if (options.format == "vcard")
            context.console.out << person->vCardRepresentation().toStdString();
        else
            context.console.out << recordToJson(person->uniqueId(), *record) << '\n';
    }
    const bool allFound = missing.isEmpty();
    for (const auto &uid : options.uids) {
        if (missing.remove(textOfUtf8(uid)))
            context.report(textOfUtf8(uid) % QStringLiteral(": no contact has this uid"));
    }
    return allFound ? ExitStatus::Done : ExitStatus::Refused;
}
