// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QBuffer>

/// A file on a disk that is full after @p capacity bytes: takes what fits, and has a reason only for the rest.
class FailingBuffer : public QBuffer
{
public:
    explicit FailingBuffer(qint64 capacity) : m_capacity(capacity) { open(QIODevice::ReadWrite); }

protected:
    qint64 writeData(const char *data, qint64 length) override
    {
        const qint64 part = qMin(length, m_capacity - pos());
        if (part > 0 || length == 0)
            return QBuffer::writeData(data, part);
        setErrorString(QStringLiteral("No space left on device"));
        return -1;
    }

private:
    qint64 m_capacity;
};
