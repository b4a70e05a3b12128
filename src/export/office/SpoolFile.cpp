// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/office/SpoolFile.h"

namespace {
constexpr qsizetype kBlockSize = qsizetype{64} * 1024; // QFile hands blocks of this size on at once
} // namespace

SpoolFile::SpoolFile()
{
    m_hasFailed = !m_file.open();
    m_pending.reserve(kBlockSize);
    QIODevice::open(QIODevice::WriteOnly | QIODevice::Unbuffered);
}

qint64 SpoolFile::writeData(const char *data, qint64 length)
{
    if (m_hasFailed)
        return -1;
    m_length += length;
    for (qint64 done = 0; done < length;) {
        const qint64 part = qMin(length - done, kBlockSize - m_pending.size());
        m_pending.append(data + done, part);
        done += part;
        if (m_pending.size() == kBlockSize && !flush())
            return -1;
    }
    return length;
}

bool SpoolFile::flush()
{
    // A full disk takes part of the bytes and gives no reason; it has one for the rest.
    for (qsizetype done = 0; done < m_pending.size() && !m_hasFailed;) {
        const qint64 taken = m_file.write(m_pending.constData() + done, m_pending.size() - done);
        m_hasFailed = taken <= 0 || (!m_file.flush() && !m_file.flush());
        done += taken;
    }
    m_pending.resize(0);
    return !m_hasFailed;
}

Result<void> SpoolFile::finish()
{
    if (!m_hasFailed)
        flush();
    if (m_hasFailed)
        return Error{
            ErrorKind::Io, QStringLiteral("a temporary file could not be written (%1)").arg(m_file.errorString())};
    return {};
}

bool SpoolFile::readAt(qint64 begin, char *data, qint64 length)
{
    return m_file.seek(begin) && m_file.read(data, length) == length;
}
