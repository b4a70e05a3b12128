// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/office/IwaStream.h"

#include <QIODevice>

#include <snappy.h>

namespace {
constexpr qsizetype kBlockSize = qsizetype{64} * 1024;
constexpr qsizetype kHeaderSize = 4;
} // namespace

void IwaStream::write(QByteArrayView plain)
{
    while (!plain.isEmpty()) {
        const QByteArrayView part = plain.first(qMin(plain.size(), kBlockSize - m_plain.size()));
        m_plain.append(part);
        plain = plain.sliced(part.size());
        if (m_plain.size() == kBlockSize)
            finish();
    }
}

void IwaStream::finish()
{
    if (m_plain.isEmpty())
        return;
    const auto plainSize = std::size_t(m_plain.size());
    m_block.resize(kHeaderSize + qsizetype(snappy::MaxCompressedLength(plainSize)));
    std::size_t size = 0;
    snappy::RawCompress(m_plain.constData(), plainSize, m_block.data() + kHeaderSize, &size);
    m_block[0] = 0;
    for (int byte = 0; byte < 3; ++byte)
        m_block[1 + byte] = char(quint8(size >> (8 * byte)));
    m_target.write(m_block.constData(), kHeaderSize + qint64(size));
    m_plain.resize(0);
}
