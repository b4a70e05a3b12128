// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QStringView>

#include <vector>

/// A message in the binary form of Protocol Buffers, with fields in the order added
/// (https://protobuf.dev/programming-guides/encoding/). It has no schema: the caller gives field numbers.
class ProtobufMessage
{
public:
    /// Also for enumerations and booleans.
    ProtobufMessage &number(int field, quint64 value);
    ProtobufMessage &real32(int field, float value);
    ProtobufMessage &real64(int field, double value);
    /// Lone surrogates become U+FFFD.
    ProtobufMessage &text(int field, QStringView value);
    ProtobufMessage &bytes(int field, QByteArrayView value);
    /// Includes the references of @p value.
    ProtobufMessage &message(int field, const ProtobufMessage &value);
    ProtobufMessage &packed(int field, const std::vector<quint64> &values);
    /// A message {1: id}, which refers to another object of the archive; the id is recorded.
    ProtobufMessage &reference(int field, quint64 objectId);

    /// Appends all fields of @p other.
    ProtobufMessage &append(const ProtobufMessage &other);

    const QByteArray &data() const { return m_data; }
    /// The objects referred to, here and in all parts, in order; may repeat.
    const std::vector<quint64> &references() const { return m_references; }

    static void appendVarint(QByteArray &data, quint64 value);
    static void appendBytesHeader(QByteArray &data, int field, qsizetype length);

private:
    QByteArray m_data;
    std::vector<quint64> m_references;
};
