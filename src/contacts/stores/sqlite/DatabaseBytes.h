// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <memory>
#include <sys/types.h>

struct sqlite3;
struct sqlite3_file;

/// The identity of a file, independent of its name; all zero for none.
struct FileOnDisk
{
    dev_t device = 0;
    ino_t number = 0;

    static FileOnDisk named(const QString &path);
    static FileOnDisk opened(int descriptor);
    friend bool operator==(const FileOnDisk &, const FileOnDisk &) = default;
};

/// The bytes of a database file, read through SQLite's file layer: closing a file in any other way drops all locks that
/// the process has on it (POSIX), and another program would then clear away the log that is being written
/// (https://www.sqlite.org/howtocorrupt.html, section 2.2).
class DatabaseBytes
{
public:
    /// Null if @p path is no regular file or cannot be read; errno says why.
    static std::unique_ptr<DatabaseBytes> open(const QString &path);
    /// The same, while no connection has the file open or can open it. Null also if one has, or if the file cannot be
    /// written.
    static std::unique_ptr<DatabaseBytes> openAlone(const QString &path);

    /// Up to @p size bytes from @p offset; fewer at the end of the file, null on errors.
    QByteArray read(qint64 offset, qint64 size) const;
    /// Copies everything to a new file @p path that only the user may read. On failure the partial copy stays.
    bool copyTo(const QString &path) const;

private:
    explicit DatabaseBytes(sqlite3 *database);
    static std::unique_ptr<DatabaseBytes> open(const QString &path, int access);
    qint64 size() const; // -1: unknown

    std::unique_ptr<sqlite3, int (*)(sqlite3 *)> m_database;
    sqlite3_file *m_file = nullptr; // the connection's
};
