// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <QIODevice>
#include <QTemporaryFile>

/// A temporary file that is written once, then read: without a name where the system can do without, and gone with the
/// object. Many small writes are cheap. After the first write that failed it takes nothing more, and finish() says why.
class SpoolFile : public QIODevice
{
public:
    SpoolFile();

    bool isSequential() const override { return true; }
    /// Bytes taken so far.
    qint64 length() const { return m_length; }
    /// Ends the writing; the text is the bare reason.
    Result<void> finish();
    /// After finish(): fills @p data with the bytes from @p begin on.
    bool readAt(qint64 begin, char *data, qint64 length);

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *data, qint64 length) override;

private:
    QTemporaryFile m_file;
    qint64 m_length = 0;
    bool m_hasFailed;
};
