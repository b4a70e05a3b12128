// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <string_view>

/// Names of files are bytes, but these programs carry them as texts. A name that is not UTF-8 would turn into that of
/// another file, so it is refused.
bool isText(std::string_view bytes);

/// The path that a user gave for a file or folder, in a form that no code mistakes for something else: Qt takes a path
/// that begins with ':' for a resource of the program, so that one is made absolute.
/// Invalid: it is empty, or some folder or link on the way to it has a name that is not UTF-8.
Result<QString> filePath(const QString &given);
