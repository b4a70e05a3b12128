// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Makes missing folders, closed to other users and synced.
bool makeFolder(const QString &path);
/// The same, and closes @p path to other users if it exists.
bool makePrivateFolder(const QString &path);
/// Until then a power cut may take the names of new files in @p path, with all that they hold.
void syncFolder(const QString &path);
