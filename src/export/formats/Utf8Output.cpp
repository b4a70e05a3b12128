// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/Utf8Output.h"

#include "export/office/WriteAll.h"

Result<void> Utf8Output::finish()
{
    flush();
    return m_written;
}

void Utf8Output::flush()
{
    if (m_written)
        m_written = writeAll(m_target, m_text.bytes());
    m_text.clear();
}
