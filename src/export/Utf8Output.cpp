// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/Utf8Output.h"

#include "export/iwa/WriteAll.h"

namespace {

constexpr std::size_t kPiece = 256 * 1024; // stays in the processor's cache

} // namespace

Utf8Output::Utf8Output(QIODevice &target)
    : m_target(target), m_buffer(kPiece), m_encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless)
{ }

void Utf8Output::write(QStringView text)
{
    const auto size = static_cast<std::size_t>(text.size());
    char *const begin = room(3 * size);
    const char16_t *units = text.utf16();
    // Most texts are short and ASCII; two plain loops are quicker there than a call of the encoder.
    char16_t seen = 0;
    for (std::size_t i = 0; i < size; ++i)
        seen = static_cast<char16_t>(seen | units[i]);
    if (seen >= 0x80) {
        m_used += static_cast<std::size_t>(m_encoder.appendToBuffer(begin, text) - begin);
        return;
    }
    for (std::size_t i = 0; i < size; ++i)
        begin[i] = static_cast<char>(units[i]);
    m_used += size;
}

Result<void> Utf8Output::finish()
{
    flush();
    return m_written;
}

void Utf8Output::makeRoom(std::size_t bytes)
{
    flush();
    if (bytes > m_buffer.size())
        m_buffer.resize(bytes);
}

void Utf8Output::flush()
{
    if (m_written)
        m_written = writeAll(m_target, {m_buffer.data(), static_cast<qsizetype>(m_used)});
    m_used = 0;
}
