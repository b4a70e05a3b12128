// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <QIODevice>
#include <QTemporaryFile>

/// A temporary file that is written once, then read: unnamed if possible, and removed with the object. Many small
/// writes are cheap. After a failed write it takes no more, and finish() returns the error.
class SpoolFile : public QIODevice
{
public:
    SpoolFile();

    bool isSequential() const override { return true; }
    /// Bytes written so far.
    qint64 length() const { return m_length; }
    /// Ends the writing; the error is the bare reason.
    Result<void> finish();
    /// To read it by after finish(), while this lives.
    QByteArray path() const { return "/proc/self/fd/" + QByteArray::number(m_file.handle()); }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *data, qint64 length) override;

private:
    QTemporaryFile m_file;
    qint64 m_length = 0;
    bool m_hasFailed;
};
