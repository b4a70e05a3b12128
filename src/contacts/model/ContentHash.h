// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <QByteArray>

/// 20 bytes that tell records apart, picture and kept lines included; the same in every run and version, because uids
/// of imported people and the history rest on it.
QByteArray contentHash(const PersonRecord &record);
