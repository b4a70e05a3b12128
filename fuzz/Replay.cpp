// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/FuzzTarget.h"

#include <QDirIterator>
#include <QFile>

#include <cstdio>

/// Runs a fuzz target on every file of the folders it is given, without a fuzzer.
int main(int argc, char *argv[])
{
    int files = 0;
    for (int i = 1; i < argc; ++i) {
        QDirIterator folder(QString::fromLocal8Bit(argv[i]), QDir::Files);
        for (; folder.hasNext(); ++files) {
            QFile file(folder.next());
            if (!file.open(QIODevice::ReadOnly))
                return 1;
            std::printf("%s\n", qPrintable(file.fileName()));
            std::fflush(stdout);
            const QByteArray bytes = file.readAll();
            LLVMFuzzerTestOneInput(
                reinterpret_cast<const std::uint8_t *>(bytes.constData()), std::size_t(bytes.size()));
        }
    }
    return files > 0 ? 0 : 1;
}
