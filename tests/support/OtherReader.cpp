// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/OtherReader.h"

#include <QJsonDocument>
#include <QProcess>
#include <QStandardPaths>

QJsonArray OtherReading::lines() const
{
    QJsonArray lines;
    for (const QByteArray &line : output.split('\n')) {
        if (line.isEmpty())
            continue;
        // Qt reads whole documents only, not single values.
        const QJsonDocument document = QJsonDocument::fromJson('[' + line + ']');
        lines.append(document.isNull() ? QJsonValue(QString::fromUtf8(line)) : document.array().at(0));
    }
    return lines;
}

OtherReading readBy(const QString &program, const QStringList &arguments)
{
    const bool script = program.endsWith(QStringLiteral(".py"));
    // The system's Python, which has the system's modules, whatever other one comes first in PATH.
    const QString path = script
        ? QStandardPaths::findExecutable(QStringLiteral("python3"), {QStringLiteral("/usr/bin")})
        : QStandardPaths::findExecutable(program);
    if (path.isEmpty())
        return {};
    QProcess process;
    process.start(path, script ? QStringList{QStringLiteral("tests/tools/") + program} + arguments : arguments);
    constexpr int kPatience = 300'000;
    const bool finished = process.waitForFinished(kPatience);
    constexpr int kModuleMissing = 77; // a script's way to say so
    if (script && process.exitCode() == kModuleMissing)
        return {};
    if (!finished || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return {true, program.toUtf8() + ": " + process.readAllStandardError()};
    return {true, process.readAllStandardOutput()};
}
