// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <array>
#include <string>
#include <string_view>

/// What stands in `contact.digest`: of a uid and a document as they are stored, byte by byte. It tells accidents, such
/// as a flipped bit; somebody who means to deceive can make one that fits.
using Digest = std::array<char, 8>;
Digest digestOf(std::string_view uid, std::string_view document);

/// The name of a picture, which is its check: its SHA-256.
std::string pictureNameOf(const QByteArray &picture);
