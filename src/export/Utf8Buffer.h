// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>
#include <QStringEncoder>

#include <cstring>
#include <string>
#include <string_view>
#include <vector>

/// UTF-8 that is written again and again. Most of that is short: copying some bytes too many is quicker than a call
/// that copies as many as wanted.
class RepeatedBytes
{
public:
    explicit RepeatedBytes(std::string_view utf8) : m_bytes(utf8), m_size(utf8.size()) { m_bytes.append(kStep, '\0'); }
    std::size_t size() const { return m_size; }

private:
    friend class Utf8Buffer;
    static constexpr std::size_t kStep = 32;
    std::string m_bytes; // and kStep more
    std::size_t m_size;
};

/// Text made UTF-8 piece by piece, in memory that it keeps for the next one. For one thread.
class Utf8Buffer
{
public:
    Utf8Buffer() : m_buffer(kFirstRoom), m_encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless) { }

    /// Bytes that are UTF-8 already.
    void write(std::string_view utf8)
    {
        std::memcpy(room(utf8.size()), utf8.data(), utf8.size());
        m_used += utf8.size();
    }
    /// The first @p size of them.
    void write(const RepeatedBytes &bytes, std::size_t size)
    {
        char *const to = room(size + RepeatedBytes::kStep);
        const char *const from = bytes.m_bytes.data();
        for (std::size_t at = 0; at < size; at += RepeatedBytes::kStep)
            std::memcpy(to + at, from + at, RepeatedBytes::kStep);
        m_used += size;
    }
    void write(const RepeatedBytes &bytes) { write(bytes, bytes.size()); }
    /// A lone surrogate becomes U+FFFD.
    void write(QStringView text);
    void write(char unit) { write(std::string_view(&unit, 1)); }

    /// Until the next write().
    QByteArrayView bytes() const { return {m_buffer.data(), static_cast<qsizetype>(m_used)}; }
    std::size_t size() const { return m_used; }
    void clear() { m_used = 0; }

private:
    static constexpr std::size_t kFirstRoom = 256; // not none: copying nothing to nowhere is undefined

    /// The end of the text, with place for so many bytes.
    char *room(std::size_t bytes)
    {
        if (m_used + bytes > m_buffer.size())
            m_buffer.resize(2 * (m_used + bytes));
        return m_buffer.data() + m_used;
    }

    std::vector<char> m_buffer;
    std::size_t m_used = 0;
    QStringEncoder m_encoder;
};
