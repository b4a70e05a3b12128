// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/book/Ignored.h"

/// What the user ignores in a book of the desktop: a file in the book's folder, an entry per line. Several programs may
/// change it.
namespace EdsIgnored {

Result<std::vector<Ignored>> read(const QString &bookFolder);
Result<void> change(const QString &bookFolder, const std::vector<Ignored> &added, const QStringList &removedIds);

} // namespace EdsIgnored
