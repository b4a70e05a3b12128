// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/Utf8Buffer.h"

namespace {

/// Copies the low byte of each unit. Whether that is the text: false, and no good, where a unit is not ASCII.
bool copyAscii(const char16_t *units, std::size_t size, char *bytes)
{
    // Most texts are short: a few units at a time, and no call, are quicker than the encoder.
    constexpr std::size_t kStep = sizeof(quint64) / sizeof(char16_t);
    quint64 seen = 0;
    const auto copyFour = [&](std::size_t at) {
        quint64 four = 0;
        std::memcpy(&four, units + at, sizeof four);
        seen |= four;
        four = (four | four >> 8) & 0x0000'FFFF'0000'FFFF;
        const auto packed = static_cast<quint32>(four | four >> 16);
        std::memcpy(bytes + at, &packed, sizeof packed);
    };
    if (size >= kStep) {
        for (std::size_t at = 0; at < size - kStep; at += kStep)
            copyFour(at);
        copyFour(size - kStep); // some of them for the second time
    } else {
        for (std::size_t at = 0; at < size; ++at) {
            seen |= units[at];
            bytes[at] = static_cast<char>(units[at]);
        }
    }
    return (seen & 0xFF80'FF80'FF80'FF80) == 0;
}

} // namespace

void Utf8Buffer::write(QStringView text)
{
    const auto size = static_cast<std::size_t>(text.size());
    char *const begin = room(3 * size);
    if (copyAscii(text.utf16(), size, begin))
        m_used += size;
    else
        m_used += static_cast<std::size_t>(m_encoder.appendToBuffer(begin, text) - begin);
}
