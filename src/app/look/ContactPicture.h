// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <QImage>
#include <QPixmap>

// The one place where the bytes of pictures, which may come from anybody, are decoded: only formats of photographs,
// known by their first bytes, and nothing that is too large, or would become so when it is decoded or scaled. Main
// thread only.

/// The picture of a contact, scaled to cover a square of @p side points; null where it cannot be read. What a very long
/// picture has beyond four times its width (or height) is cut off at both ends.
QImage decodedPicture(const QByteArray &imageFile, int side);

/// The round picture of a contact; where there is none, or one that cannot be read, a head in a colour that belongs to
/// the uid, light or dark as the application is.
QPixmap personPicture(const QByteArray &imageFile, int size, qreal devicePixelRatio, const QString &uid = {});

/// The largest file that the user can choose a picture from.
inline constexpr qint64 kLargestChosenPicture = 100LL * 1024 * 1024;

/// What to store for a picture that the user has chosen: the file as it is, or a smaller picture made of a large
/// photograph. Invalid: it cannot be shown; the text says why.
Result<QByteArray> pictureToStore(const QByteArray &imageFile);
