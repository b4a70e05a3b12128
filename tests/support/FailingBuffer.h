// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QBuffer>

/// A file on a disk that is full after @p capacity bytes.
class FailingBuffer : public QBuffer
{
public:
    explicit FailingBuffer(qint64 capacity) : m_capacity(capacity) { open(QIODevice::ReadWrite); }

protected:
    qint64 writeData(const char *data, qint64 length) override
    {
        if (pos() + length <= m_capacity)
            return QBuffer::writeData(data, length);
        setErrorString(QStringLiteral("No space left on device"));
        return -1;
    }

private:
    qint64 m_capacity;
};
