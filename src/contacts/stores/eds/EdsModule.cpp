// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/EdsModule.h"

#include "contacts/stores/eds/EdsStore.h"

extern "C" Q_DECL_EXPORT const EdsModule *peoplenookEdsModule()
{
    static constexpr EdsModule module{PEOPLENOOK_VERSION, EdsStore::isOffered, EdsStore::open, EdsStore::books};
    return &module;
}
