// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Makes missing folders, closed to other users and synced. Whether the folder is there now.
bool makeFolder(const QString &path);
/// The same, and closes @p path to other users if it exists.
bool makePrivateFolder(const QString &path);
/// Makes the names of new files in @p path survive a power cut.
void syncFolder(const QString &path);
