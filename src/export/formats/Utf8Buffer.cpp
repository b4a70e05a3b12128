// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/Utf8Buffer.h"

#include <array>

namespace {

constexpr quint64 kNotAscii = 0xFF80'FF80'FF80'FF80; // of four units

/// Four units.
quint64 copyFour(const char16_t *units, char *bytes)
{
    quint64 four = 0;
    std::memcpy(&four, units, sizeof four);
    quint64 packed = (four | four >> 8) & 0x0000'FFFF'0000'FFFF;
    packed |= packed >> 16;
    std::memcpy(bytes, &packed, sizeof(quint32));
    return four;
}

/// Copies the low byte of each unit. Whether that is the text: false, and no good, where a unit is not ASCII.
///
/// Most texts are short. For those a few steps, of which the last copies some units for the second time, are quicker
/// than the encoder; a processor guesses seldom wrong which steps come, as there are few kinds of sizes.
bool copyAscii(const char16_t *units, std::size_t size, char *bytes)
{
    using Units = char16_t __attribute__((vector_size(16)));
    using Bytes = quint8 __attribute__((vector_size(8)));
    constexpr std::size_t kStep = sizeof(Bytes);
    constexpr std::size_t kHalfStep = kStep / 2;
    if (size < kHalfStep) {
        quint64 seen = 0;
        for (std::size_t at = 0; at < size; ++at) {
            seen |= units[at];
            bytes[at] = static_cast<char>(units[at]);
        }
        return (seen & kNotAscii) == 0;
    }
    if (size < kStep)
        return ((copyFour(units, bytes) | copyFour(units + size - kHalfStep, bytes + size - kHalfStep)) & kNotAscii)
            == 0;
    Units seen{};
    const auto copyStep = [&](std::size_t at) {
        Units step;
        std::memcpy(&step, units + at, sizeof step);
        seen |= step;
        const Bytes packed = __builtin_convertvector(step, Bytes);
        std::memcpy(bytes + at, &packed, sizeof packed);
    };
    copyStep(0);
    if (size > 2 * kStep) {
        copyStep(kStep);
        for (std::size_t at = 2 * kStep; at + 2 * kStep < size; at += kStep)
            copyStep(at);
        copyStep(size - 2 * kStep);
    }
    copyStep(size - kStep);
    std::array<quint64, 2> halves{};
    std::memcpy(halves.data(), &seen, sizeof halves);
    return ((halves[0] | halves[1]) & kNotAscii) == 0;
}

} // namespace

char *Utf8Pen::put(char *to, QStringView text, QStringEncoder &encoder)
{
    const auto size = static_cast<std::size_t>(text.size());
    return copyAscii(text.utf16(), size, to) ? to + size : encoder.appendToBuffer(to, text);
}
