// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The desktop's contacts program: GNOME Contacts, if installed.
namespace ContactsApplication {

/// Shows the person with this AddressBookStore::desktopId(), for viewing; it has a button for editing. False if that is
/// null, or the program is missing or does not start.
bool show(const QString &desktopId);

} // namespace ContactsApplication
