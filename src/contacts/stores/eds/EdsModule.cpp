// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/EdsModule.h"

#include "contacts/stores/eds/EdsStore.h"

namespace {

Result<std::unique_ptr<AddressBookStore>> openStore(const EdsRequest &request)
{
    auto store = EdsStore::open(request);
    if (!store)
        return store.error();
    return std::unique_ptr<AddressBookStore>(std::move(*store));
}

} // namespace

extern "C" Q_DECL_EXPORT const EdsModule *peoplenookEdsModule()
{
    static constexpr EdsModule module{PEOPLENOOK_VERSION, EdsStore::isOffered, openStore, EdsStore::books};
    return &module;
}
