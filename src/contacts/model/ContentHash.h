// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <QByteArray>

/// A 20-byte hash, including picture and kept lines; the same in every run and version, because uids of imported people
/// and the history depend on it.
QByteArray contentHash(const PersonRecord &record);
