// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/office/SpoolFile.h"

#include <QDateTime>

#include <vector>

/// A zip file whose members are written one after the other.
///
/// The members' plain bytes go to a temporary file, removed with the package: sizes are then known before a member's
/// header is written, so the zip file needs no features (data descriptors, 64-bit headers) that some office programs
/// cannot read, and memory does not grow. One thread.
class ZipPackage
{
public:
    enum class Method { Stored, Deflated };

    /// @p time is every member's modification time, in UTC, to two seconds. The same time and members give the same
    /// bytes.
    explicit ZipPackage(const QDateTime &time) : m_time(time.toUTC()) { }

    /// Ends the previous member. Names are ASCII, with slashes, and unique.
    void beginMember(const QByteArray &name, Method method);
    /// For the bytes of the current member. Errors may be left to writeTo(), which reports them.
    QIODevice &member() { return m_spool; }
    void addMember(const QByteArray &name, Method method, QByteArrayView bytes);

    /// Writes the zip file to @p target, which must be open, empty and seekable; it is neither flushed nor closed. On
    /// failure the error is the bare reason, and the content of @p target must be discarded.
    Result<void> writeTo(QIODevice &target);

private:
    struct Member
    {
        QByteArray name;
        Method method;
        qint64 begin;
    };

    QDateTime m_time;
    SpoolFile m_spool;
    std::vector<Member> m_members;
};
