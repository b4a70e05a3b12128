// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/FailingStore.h"

FailingStore::FailingStore(std::unique_ptr<AddressBookStore> store, int failAtCall, Error error)
    : m_store(std::move(store)), m_failAtCall(failAtCall), m_error(std::move(error))
{ }

Result<std::vector<StoredRecord>> FailingStore::loadAll()
{
    if (fails())
        return m_error;
    return m_store->loadAll();
}

Result<void> FailingStore::commit(const std::vector<RecordChange> &changes)
{
    if (fails())
        return m_error;
    return m_store->commit(changes);
}

Result<std::vector<OutsideChange>> FailingStore::takeChangesFromOutside()
{
    if (fails())
        return m_error;
    return m_store->takeChangesFromOutside();
}
