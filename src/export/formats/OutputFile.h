// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <QFile>

#include <functional>

/// Whether anything, a dangling link too, stands at a path.
using PathTest = std::function<bool(const QString &path)>;

class Function
{
public:
    /// The path itself or, where something stands already, the first free one with a number behind the name: "(0)",
    /// "(1)" and so on. Free at this moment only: OutputFile claims a name.
    static QString GetOutPutFile(const QString &path);
    static QString GetOutPutFile(const QString &path, const PathTest &exists);
};

/// A file that appears under its name whole or not at all. Until it is complete, its content is in a temporary file of
/// the same folder, without a name where the file system can do that: then not even a kill leaves anything behind.
/// Content survives a crash of the program, not a power cut: nothing waits for the disk. For one thread.
class OutputFile
{
public:
    /// What to do where something stands at the path.
    enum class IfTaken {
        TakeFreeName, ///< that of Function::GetOutPutFile; never replaces anything, nor follows a link
        Replace, ///< a file or link; a folder is an error
    };

    /// Runs @p fill, which says why it failed, on an unbuffered device and puts the content in place. Returns the path
    /// it got; on failure nothing is in place.
    static Result<QString> write(const QString &path, const std::function<Result<void>(QIODevice &)> &fill,
        IfTaken ifTaken = IfTaken::TakeFreeName);

    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;

private:
    OutputFile(QString path, IfTaken ifTaken) : m_path(std::move(path)), m_ifTaken(ifTaken) { }
    ~OutputFile();

    int openTemporary(); // 0 or errno
    Error failure(int errorNumber) const;
    int claim(const QString &path) const; // 0 or errno
    int claimCopy(const QString &path); // of a folder on another file system; 0 or errno
    int claimAnyName(); // to rename from; 0 or errno
    Result<QString> commit();
    Result<QString> replace();

    const QString m_path; // asked for
    const IfTaken m_ifTaken;
    QFile m_file;
    QByteArray m_name; // of the temporary file; empty when it has none
};
