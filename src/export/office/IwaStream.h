// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

class QIODevice;

/// Cuts bytes into compressed blocks: the outer form of an IWA file.
///
/// A block is a zero byte, the length of the rest in three bytes, little-endian, and raw Snappy data of at most 64 KiB
/// of plain bytes, without stream identifier or checksum
/// (https://github.com/obriensp/iWorkFileFormat/blob/master/Docs/index.md).
class IwaStream
{
public:
    /// @p target must outlive the stream and reports its own errors.
    explicit IwaStream(QIODevice &target) : m_target(target) { }
    IwaStream(const IwaStream &) = delete;
    IwaStream &operator=(const IwaStream &) = delete;

    void write(QByteArrayView plain);
    /// Writes the last block. The destructor does not.
    void finish();

private:
    QIODevice &m_target;
    QByteArray m_plain;
    QByteArray m_block;
};
