// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/office/SpoolFile.h"

#include "export/office/WriteAll.h"

SpoolFile::SpoolFile() : m_hasFailed(!m_file.open())
{
    QIODevice::open(QIODevice::WriteOnly | QIODevice::Unbuffered);
}

qint64 SpoolFile::writeData(const char *data, qint64 length)
{
    m_length += length;
    m_hasFailed = m_hasFailed || !writeAll(m_file, {data, qsizetype(length)});
    return m_hasFailed ? -1 : length;
}

Result<void> SpoolFile::finish()
{
    const bool isFlushed = m_file.isOpen() && (m_file.flush() || m_file.flush()); // twice: see writeAll()
    if (m_hasFailed || !isFlushed)
        return Error{
            ErrorKind::Io, QStringLiteral("a temporary file could not be written (%1)").arg(m_file.errorString())};
    return {};
}
