// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QStringView>

#include <vector>

/// A message in the binary form of Protocol Buffers, field after field as they are added
/// (https://protobuf.dev/programming-guides/encoding/). It knows no schema: the caller names field numbers.
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
    /// Takes over the references of @p value too.
    ProtobufMessage &message(int field, const ProtobufMessage &value);
    ProtobufMessage &packed(int field, const std::vector<quint64> &values);
    /// A message {1: id}, the form in which one object of an archive points to another; the id is noted.
    ProtobufMessage &reference(int field, quint64 objectId);

    /// All fields of @p other behind these.
    ProtobufMessage &append(const ProtobufMessage &other);

    const QByteArray &data() const { return m_data; }
    /// The objects pointed to, here and in all parts, in order; one may occur more than once.
    const std::vector<quint64> &references() const { return m_references; }

    static void appendVarint(QByteArray &data, quint64 value);
    static void appendBytesHeader(QByteArray &data, int field, qsizetype length);

private:
    QByteArray m_data;
    std::vector<quint64> m_references;
};
