// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/Folders.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

bool makeFolder(const QString &path)
{
    const QFileInfo folder(path);
    if (folder.isDir())
        return true;
    const QString parent = folder.absolutePath();
    const bool isThere = parent != path && makeFolder(parent)
        && (::mkdir(QFile::encodeName(path).constData(), 0700) == 0
            || (errno == EEXIST && QFileInfo(path).isDir())); // another program was faster
    if (isThere)
        syncFolder(parent);
    return isThere;
}

bool makePrivateFolder(const QString &path)
{
    return makeFolder(path) && QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void syncFolder(const QString &path)
{
    const int folder = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return;
    ::fsync(folder);
    ::close(folder);
}
