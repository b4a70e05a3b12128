// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <QFile>

#include <functional>

/// Whether anything, even a dangling link, exists at a path.
using PathTest = std::function<bool(const QString &path)>;

class Function
{
public:
    /// The path itself or, if it exists, the first free one with a number after the name: "(0)", "(1)" and so on. Only
    /// free at this moment: OutputFile claims names.
    static QString GetOutPutFile(const QString &path);
    static QString GetOutPutFile(const QString &path, const PathTest &exists);
};

/// A file that appears under its name completely or not at all. Until then its content is in a temporary file in the
/// same folder, unnamed if the file system allows, so that even a kill leaves nothing behind. Content survives a crash
/// of the program, not a power cut: nothing waits for the disk. One thread.
class OutputFile
{
public:
    /// What to do if the path exists.
    enum class IfTaken {
        TakeFreeName, ///< Function::GetOutPutFile's; replaces nothing and follows no link
        Replace, ///< replaces a file or link; a folder is an error
    };

    /// Runs @p fill on an unbuffered device and puts the content in place. Returns the final path; on failure nothing
    /// is in place.
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
    int claimCopy(const QString &path); // from a folder on another file system; 0 or errno
    int claimAnyName(); // to rename from; 0 or errno
    Result<QString> commit();
    Result<QString> replace();

    const QString m_path; // as requested
    const IfTaken m_ifTaken;
    QFile m_file;
    QByteArray m_name; // of the temporary file; empty without a name
};
