// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <string_view>

/// File names are bytes, but these programs treat them as texts. A name that is not UTF-8 would become that of another
/// file, so it is refused.
bool isText(std::string_view bytes);

/// The user's path in an unambiguous form: Qt takes a leading ':' for a program resource, so such a path is made
/// absolute.
/// Invalid: it is empty, or a folder or link on the way has a name that is not UTF-8.
Result<QString> filePath(const QString &given);
