// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <QByteArray>

enum class VCardVersion { V3, V4 };

/// The record as one vCard that holds everything known of it: UTF-8, CR LF line ends, lines folded at 75 octets
/// (RFC 2426 section 2.6, RFC 6350 section 3.2). Reading it with VCardReader gives an equal record under the same uid;
/// only kept lines with malformed heads, or that share a group's label, may come back tidied up.
QByteArray vCardFromRecord(const QString &uid, const PersonRecord &record, VCardVersion version = VCardVersion::V3);
