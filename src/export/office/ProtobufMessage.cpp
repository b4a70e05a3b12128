// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/office/ProtobufMessage.h"

#include <QString>
#include <QtEndian>

#include <cstring>

namespace {

enum WireType : quint8 { Varint = 0, Fixed64 = 1, Bytes = 2, Fixed32 = 5 };

void appendTag(QByteArray &data, int field, WireType type)
{
    ProtobufMessage::appendVarint(data, (quint64(field) << 3) | type);
}

template <typename Bits, typename Value> void appendFixed(QByteArray &data, Value value)
{
    static_assert(sizeof(Bits) == sizeof(Value));
    Bits bits;
    std::memcpy(&bits, &value, sizeof bits);
    bits = qToLittleEndian(bits);
    data.append(reinterpret_cast<const char *>(&bits), sizeof bits);
}

} // namespace

void ProtobufMessage::appendVarint(QByteArray &data, quint64 value)
{
    while (value >= 0x80) {
        data.append(char(quint8(value) | 0x80));
        value >>= 7;
    }
    data.append(char(value));
}

void ProtobufMessage::appendBytesHeader(QByteArray &data, int field, qsizetype length)
{
    appendTag(data, field, Bytes);
    appendVarint(data, quint64(length));
}

ProtobufMessage &ProtobufMessage::number(int field, quint64 value)
{
    appendTag(m_data, field, Varint);
    appendVarint(m_data, value);
    return *this;
}

ProtobufMessage &ProtobufMessage::real32(int field, float value)
{
    appendTag(m_data, field, Fixed32);
    appendFixed<quint32>(m_data, value);
    return *this;
}

ProtobufMessage &ProtobufMessage::real64(int field, double value)
{
    appendTag(m_data, field, Fixed64);
    appendFixed<quint64>(m_data, value);
    return *this;
}

ProtobufMessage &ProtobufMessage::text(int field, QStringView value)
{
    return bytes(field, value.toUtf8());
}

ProtobufMessage &ProtobufMessage::bytes(int field, QByteArrayView value)
{
    appendBytesHeader(m_data, field, value.size());
    m_data.append(value);
    return *this;
}

ProtobufMessage &ProtobufMessage::message(int field, const ProtobufMessage &value)
{
    m_references.insert(m_references.end(), value.m_references.begin(), value.m_references.end());
    return bytes(field, value.m_data);
}

ProtobufMessage &ProtobufMessage::packed(int field, const std::vector<quint64> &values)
{
    QByteArray list;
    for (const quint64 value : values)
        appendVarint(list, value);
    return bytes(field, list);
}

ProtobufMessage &ProtobufMessage::reference(int field, quint64 objectId)
{
    message(field, ProtobufMessage().number(1, objectId));
    m_references.push_back(objectId);
    return *this;
}

ProtobufMessage &ProtobufMessage::append(const ProtobufMessage &other)
{
    m_references.insert(m_references.end(), other.m_references.begin(), other.m_references.end());
    m_data.append(other.m_data);
    return *this;
}
