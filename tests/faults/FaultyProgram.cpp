// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "faults/FaultyProgram.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>

FaultyRun runWithFault(const QString &program, const QStringList &arguments, const QString &folder, const Fault &fault)
{
    const QString root = QCoreApplication::applicationDirPath() + QStringLiteral("/../");
    const QTemporaryDir markFolder;
    const QString mark = markFolder.filePath(QStringLiteral("mark"));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LD_PRELOAD"), root + QStringLiteral("tests/libfaultshim.so"));
    environment.insert(QStringLiteral("PEOPLENOOK_FAULT"), QString::fromLatin1(fault.kind));
    environment.insert(QStringLiteral("PEOPLENOOK_FAULT_AT"), QString::number(fault.atCall));
    environment.insert(QStringLiteral("PEOPLENOOK_FAULT_UNDER"), folder);
    environment.insert(QStringLiteral("PEOPLENOOK_FAULT_MARK"), mark);
    // Sanitizers want to be the first library, but the shim must see the calls first; they see them after it.
    environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("verify_asan_link_order=0"));

    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(root + program, arguments);
    if (!process.waitForStarted() || !process.waitForFinished(-1))
        qFatal("%s cannot be run", qPrintable(program));
    FaultyRun run;
    run.wasReached = QFile::exists(mark);
    run.wasKilled = process.exitStatus() == QProcess::CrashExit && process.exitCode() == 9;
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.out = process.readAllStandardOutput();
    run.err = process.readAllStandardError();
    return run;
}

QString quickFolder()
{
    const QString memory = QStringLiteral("/dev/shm");
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + QStringLiteral("/peoplenook-faults-XXXXXX");
}

int faultRounds()
{
    return std::max(1, qEnvironmentVariableIntValue("PEOPLENOOK_FAULT_ROUNDS"));
}
