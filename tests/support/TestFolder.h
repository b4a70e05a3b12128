// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/Files.h"

#include <QTemporaryDir>
#include <QTest>

/// A folder for the files of a test program.
class TestFolder
{
protected:
    static QString u(const char *text) { return QString::fromUtf8(text); }

    /// An empty folder for the test function that runs.
    QString freshFolder() const
    {
        QString path = m_folder.filePath(u(QTest::currentTestFunction()) + u'-' + u(QTest::currentDataTag()));
        QDir(path).removeRecursively();
        QDir().mkpath(path);
        return path;
    }

    QTemporaryDir m_folder;
};
