// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/OutputFile.h"

#include <QFileInfo>
#include <QRandomGenerator>

#include <fcntl.h>
#include <sys/sendfile.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace {

bool standsAt(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

QString freeName(const QString &path, const PathTest &exists)
{
    if (!exists(path))
        return path;
    // The extension of the last path component only: a dot in a folder's name begins none, nor does a leading one.
    const qsizetype nameStart = path.lastIndexOf(u'/') + 1;
    const qsizetype dot = path.lastIndexOf(u'.');
    const bool hasExtension = dot > nameStart && dot + 1 < path.size();
    const QString stem = hasExtension ? path.first(dot) : path;
    const QString extension = hasExtension ? path.sliced(dot) : QString();
    for (int k = 0;; ++k) {
        const QString number = u'(' % QString::number(k) % u')';
        QString candidate = QString(stem).remove(number) % number % extension;
        if (!exists(candidate))
            return candidate;
    }
}

QByteArray randomName(const QString &folder)
{
    const quint64 number = QRandomGenerator::system()->generate64();
    return QFile::encodeName(folder % QStringLiteral("/.peoplenook-") % QString::number(number, 36));
}

QByteArray descriptorPath(int descriptor)
{
    return "/proc/self/fd/" + QByteArray::number(descriptor);
}

} // namespace

QString Function::GetOutPutFile(const QString &path)
{
    return freeName(path, standsAt);
}

QString Function::GetOutPutFile(const QString &path, const PathTest &exists)
{
    return freeName(path, exists);
}

OutputFile::~OutputFile()
{
    m_file.close();
    if (!m_name.isEmpty())
        unlink(m_name.constData());
}

int OutputFile::openTemporary()
{
    const QString folder = QFileInfo(m_path).path();
    int descriptor = -1;
    if (access("/proc/self/fd", X_OK) == 0)
        descriptor = ::open(QFile::encodeName(folder).constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0666);
    while (descriptor < 0) {
        m_name = randomName(folder);
        descriptor = ::open(m_name.constData(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC | O_NOFOLLOW, 0666);
        if (descriptor < 0 && errno != EEXIST) {
            m_name.clear();
            return errno;
        }
    }
    // Cannot fail: that would take a directory.
    if (!m_file.open(descriptor, QIODevice::ReadWrite | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle)) {
        close(descriptor);
        return EIO;
    }
    return 0;
}

Error OutputFile::failure(int errorNumber) const
{
    return {ErrorKind::Io, m_path % QStringLiteral(": cannot be written: ") % qt_error_string(errorNumber)};
}

int OutputFile::claim(const QString &path) const
{
    const QByteArray target = QFile::encodeName(path);
    if (m_name.isEmpty()) {
        const QByteArray source = descriptorPath(m_file.handle());
        return linkat(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), AT_SYMLINK_FOLLOW) == 0 ? 0 : errno;
    }
    if (renameat2(AT_FDCWD, m_name.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    // A file system without exclusive renames; the temporary name goes with the object.
    return link(m_name.constData(), target.constData()) == 0 ? 0 : errno;
}

int OutputFile::claimCopy(const QString &path)
{
    OutputFile copy(path, m_ifTaken);
    if (const int refusal = copy.openTemporary(); refusal != 0)
        return refusal;
    off_t position = 0;
    ssize_t taken = 0;
    do
        taken = sendfile(copy.m_file.handle(), m_file.handle(), &position, std::size_t(m_file.size() - position));
    while (taken > 0);
    return taken < 0 ? errno : copy.claim(path);
}

Result<QString> OutputFile::commit()
{
    // Some file systems report a failed write only when a descriptor is closed.
    if (close(dup(m_file.handle())) != 0)
        return failure(errno);
    if (m_ifTaken == IfTaken::Replace)
        return replace();
    int refusal = 0;
    const QString path = freeName(m_path, [this, &refusal](const QString &candidate) {
        refusal = claim(candidate);
        // The number may have been taken out of a folder's name too, and that other folder need not be there, nor on
        // the same file system.
        if (refusal == EXDEV)
            refusal = claimCopy(candidate);
        return refusal == EEXIST || (refusal == ENOENT && QFileInfo(candidate).path() != QFileInfo(m_path).path());
    });
    if (refusal != 0)
        return failure(refusal);
    return path;
}

int OutputFile::claimAnyName()
{
    int refusal = EEXIST;
    while (refusal == EEXIST) {
        const QByteArray name = randomName(QFileInfo(m_path).path());
        refusal = claim(QFile::decodeName(name));
        if (refusal == 0)
            m_name = name;
    }
    return refusal;
}

Result<QString> OutputFile::replace()
{
    if (m_name.isEmpty()) {
        const int refusal = claim(m_path);
        if (refusal == 0)
            return m_path;
        if (refusal != EEXIST)
            return failure(refusal);
        if (const int refusedToo = claimAnyName(); refusedToo != 0)
            return failure(refusedToo);
    }
    if (rename(m_name.constData(), QFile::encodeName(m_path).constData()) != 0)
        return failure(errno);
    m_name.clear();
    return m_path;
}

Result<QString> OutputFile::write(
    const QString &path, const std::function<Result<void>(QIODevice &)> &fill, IfTaken ifTaken)
{
    OutputFile file(path, ifTaken);
    if (const int refusal = file.openTemporary(); refusal != 0)
        return file.failure(refusal);
    if (const auto filled = fill(file.m_file); !filled)
        return Error{filled.error().kind, path % QStringLiteral(": cannot be written: ") % filled.error().text};
    return file.commit();
}
