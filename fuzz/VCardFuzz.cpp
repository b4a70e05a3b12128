// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/RecordPromises.h"

namespace {

/// Whatever stands in a card, a change of it says what was changed, and nothing else changes.
void demandUpdate(const QByteArray &card)
{
    const ImportedRecord before = VCardReader(card).next();
    if (!before.record)
        return;
    PersonRecord after = *before.record;
    after.removeValue(kABPhoneProperty);
    after.removeValue(kABJobTitleProperty);
    after.setText(kABFirstNameProperty, QStringLiteral("new"));
    const QByteArray text = updateCard(card, {before.uid, *before.record, after, VCardForm::V3});
    if (text.isNull())
        return;
    const ImportedRecord read = VCardReader(text).next();
    demand(read.record && read.record->hasSameValues(after), "an updated card says the change");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    VCardReader reader(bytesOf(data, size));
    readAll(reader);
    demandUpdate(bytesOf(data, size));
    return 0;
}
