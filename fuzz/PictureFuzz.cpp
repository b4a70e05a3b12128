// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/look/ContactPicture.h"
#include "fuzz/FuzzTarget.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr int kSide = 96;
    const QImage picture = decodedPicture(bytesOf(data, size), kSide);
    demand(picture.isNull() || (picture.width() >= kSide && picture.height() >= kSide), "a picture covers its square");
    demand(picture.width() * picture.height() <= 4 * kSide * kSide, "a picture is small, however it is shaped");
    return 0;
}
