// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

/// The largest picture file that is read at all.
inline constexpr qint64 kLargestPictureFile = 20LL * 1024 * 1024;

/// The picture of a contact, scaled to cover a square of @p side points; null where it cannot be read. The one place
/// where the bytes of pictures, which may come from anybody, are decoded: only formats of photographs, known by their
/// first bytes, and nothing that is large, or would become so when it is decoded or scaled. What a very long picture
/// has beyond four times its width (or height) is cut off at both ends.
QImage decodedPicture(const QByteArray &imageFile, int side);
