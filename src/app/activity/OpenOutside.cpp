// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/activity/OpenOutside.h"

#include "app/activity/ActivityLog.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QPointer>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>
#include <QUrl>

#include <chrono>

namespace {

using namespace std::chrono_literals;

/// An opener that finds no program says so sooner than this. One that still runs then is the program.
constexpr auto kPatience = 10s;

/// Qt starts the desktop's opener and calls that success; what the opener answers comes later.
void open(const QUrl &what, QObject *context, const std::function<void(bool)> &opened)
{
    const QString opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    if (opener.isEmpty()) {
        opened(QDesktopServices::openUrl(what));
        return;
    }
    auto *process = new QProcess; // not the context's, with which it would end what it has opened
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    QObject::connect(process, &QProcess::finished, context,
        [opened](int code, QProcess::ExitStatus status) { opened(status == QProcess::NormalExit && code == 0); });
    QObject::connect(process, &QProcess::errorOccurred, context, [opened](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            opened(false);
    });
    QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
    QTimer::singleShot(kPatience, process, [process, context = QPointer(context), opened] {
        if (!context)
            return;
        process->disconnect(context);
        opened(true);
    });
    process->start(opener, {what.toString(QUrl::FullyEncoded)});
}

} // namespace

void openOutside(const QUrl &what, ActivityLog &log)
{
    open(what, &log, [what, &log](bool isOpen) {
        if (!isOpen)
            log.append(ActivityLog::Kind::Failure,
                ActivityLog::tr("%1 cannot be shown: no program was found that opens it")
                    .arg(what.toDisplayString(QUrl::PreferLocalFile)));
    });
}

void openCopyOutside(
    const QString &resource, const QString &fileName, QObject *context, const std::function<void(bool isOpen)> &opened)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    const QString copy = QDir(folder).filePath(fileName);
    QDir().mkpath(folder);
    QFile::remove(copy);
    QFile::copy(resource, copy);
    QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner); // resources are read-only, and so is their copy
    open(QUrl::fromLocalFile(copy), context, opened);
}
