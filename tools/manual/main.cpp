// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
//
// peoplenook-manual OUT.pdf CHAPTER.md...
#include "ManualPrinter.h"

#include <QGuiApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() < 3) {
        std::fputs("usage: peoplenook-manual OUT.pdf CHAPTER.md...\n", stderr);
        return 2;
    }
    ManualPrinter manual(
        QStringLiteral("Brindle PeopleNook"), QStringLiteral("Manual for version " PEOPLENOOK_VERSION));
    QString error;
    for (const QString &chapter : arguments.mid(2)) {
        if (!manual.addChapter(chapter, &error)) {
            std::fprintf(stderr, "%s\n", qPrintable(error));
            return 1;
        }
    }
    if (!manual.print(arguments[1])) {
        std::fprintf(stderr, "%s: cannot be written\n", qPrintable(arguments[1]));
        return 1;
    }
    return 0;
}
