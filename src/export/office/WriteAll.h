// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <QByteArrayView>

class QIODevice;

/// Writes all of @p bytes; the error is the bare reason. A full disk takes part of the bytes without an error and fails
/// for the rest.
Result<void> writeAll(QIODevice &target, QByteArrayView bytes);
