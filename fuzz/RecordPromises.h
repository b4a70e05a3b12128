// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/RecordJson.h"
#include "contacts/cards/VCardReader.h"
#include "contacts/cards/VCardWriter.h"
#include "fuzz/FuzzTarget.h"

inline PersonRecord withoutCardLines(const PersonRecord &record)
{
    PersonRecord plain = record;
    plain.setKeptLines({});
    return plain;
}

/// Whatever could be read can be written and read again in both text forms. The lines kept from a card are left out:
/// a malformed one may be tidied up when it is read again.
inline void demandRoundTrips(const QString &uid, const PersonRecord &record)
{
    const auto fromJson = recordFromJson(recordToJson(uid, record));
    demand(bool(fromJson), "the JSON of a record that was read can be read");
    demand(*fromJson->record == withoutCardLines(record), "a record comes back from its JSON as it was");

    for (const VCardForm version : {VCardForm::V3, VCardForm::V4}) {
        VCardReader reader(vCardFromRecord(uid, record, version));
        const ImportedRecord fromCard = reader.next();
        demand(fromCard.record != nullptr, "the card of a record can be read");
        demand(withoutCardLines(*fromCard.record) == withoutCardLines(record),
            "a person comes back from a card as it was");
        demand(!reader.next().record, "a record makes one card");
    }
}

/// Reads everything that a source has.
inline void readAll(RecordSource &source)
{
    while (true) {
        const ImportedRecord imported = source.next();
        demand(source.bytesRead() >= 0 && source.bytesRead() <= source.totalBytes(), "progress stays within the file");
        if (!imported.record)
            break;
        demandRoundTrips(imported.uid, *imported.record);
    }
    source.takeProblems();
}
