// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/office/WriteAll.h"

#include <QIODevice>

Result<void> writeAll(QIODevice &target, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const qint64 taken = target.write(bytes.data(), bytes.size());
        if (taken <= 0)
            return Error{ErrorKind::Io, target.errorString()};
        bytes = bytes.sliced(taken);
    }
    return {};
}
