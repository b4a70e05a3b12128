// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/Utf8Output.h"

#include "export/office/WriteAll.h"

void Utf8Output::write(QStringView text)
{
    const std::size_t used = m_bytes.size();
    m_bytes.resize(used + std::size_t(m_encoder.requiredSpace(text.size())));
    m_bytes.resize(std::size_t(m_encoder.appendToBuffer(m_bytes.data() + used, text) - m_bytes.data()));
    flushLargePiece();
}

Result<void> Utf8Output::finish()
{
    flush();
    return m_written;
}

void Utf8Output::flush()
{
    if (m_written)
        m_written = writeAll(m_target, m_bytes);
    m_bytes.clear();
}
