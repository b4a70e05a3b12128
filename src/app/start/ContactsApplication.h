// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The desktop's own program for contacts: GNOME Contacts, where it is installed.
namespace ContactsApplication {

/// Starts it on the person that AddressBookStore::desktopId() names. False when that is null, or when the program is
/// not there or does not start. It shows; editing is a button in it.
bool show(const QString &desktopId);

} // namespace ContactsApplication
