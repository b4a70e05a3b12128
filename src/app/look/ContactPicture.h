// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <QImage>
#include <QPixmap>

// The only decoder of pictures, which are untrusted: photograph formats only, recognised by their first bytes, and
// nothing too large, even after decoding or scaling. Main thread only.

/// A contact's picture, scaled to cover a square of @p side pixels; null if unreadable. A very long picture is cropped
/// at both ends to four times its width (or height).
QImage decodedPicture(const QByteArray &imageFile, int side);

/// The round picture of a contact; where there is none, or one that cannot be read, a head in a colour that belongs to
/// the uid, light or dark as the application is.
QPixmap personPicture(const QByteArray &imageFile, int size, qreal devicePixelRatio, const QString &uid = {});

/// The largest picture file that the user can choose.
inline constexpr qint64 kLargestChosenPicture = 100LL * 1024 * 1024;

/// What to store for a picture chosen by the user: the file itself, or a scaled-down large photograph. Invalid: it
/// cannot be shown; the text says why.
Result<QByteArray> pictureToStore(const QByteArray &imageFile);
