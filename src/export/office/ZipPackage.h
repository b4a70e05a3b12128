// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/office/SpoolFile.h"

#include <QDateTime>

#include <vector>

/// A zip file made of members that are written one after the other.
///
/// The members' plain bytes go to a temporary file, which is gone with the package: sizes are then known before a
/// member's header is written, so the zip file needs none of the forms (data descriptors, 64-bit headers) that some
/// office programs do not read, and memory does not grow. For one thread.
class ZipPackage
{
public:
    enum class Method { Stored, Deflated };

    /// @p time becomes the time of change of every member, in UTC, to two seconds. The same time and members give the
    /// same bytes.
    explicit ZipPackage(const QDateTime &time) : m_time(time.toUTC()) { }

    /// Ends the member before. Names are ASCII, with slashes, and must be different.
    void beginMember(const QByteArray &name, Method method);
    /// Takes the bytes of the member begun. Errors may be left to writeTo(), which reports them.
    QIODevice &member() { return m_spool; }
    void addMember(const QByteArray &name, Method method, QByteArrayView bytes);

    /// Writes the zip file to @p target, which must be open, empty and seekable; it is neither flushed nor closed.
    /// On failure the text is the bare reason, and what @p target holds is to be thrown away.
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
