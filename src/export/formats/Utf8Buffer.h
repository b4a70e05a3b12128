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
    explicit RepeatedBytes(std::string utf8) : m_bytes(std::move(utf8)), m_size(m_bytes.size())
    {
        m_bytes.append(kStep, '\0');
    }
    std::size_t size() const { return m_size; }

private:
    friend class Utf8Pen;
    friend class Utf8Buffer;
    static constexpr std::size_t kStep = 32;
    std::string m_bytes; // and kStep more
    std::size_t m_size;
};

/// Writes where a Utf8Buffer has made room. Its place is a local value of who uses it; a member of the buffer would
/// have to be read again after each byte, as that could have changed it.
class Utf8Pen
{
public:
    /// The bytes from @p first to before @p last.
    void write(const RepeatedBytes &bytes, std::size_t first, std::size_t last)
    {
        const char *const from = bytes.m_bytes.data() + first;
        const std::size_t size = last - first;
        std::memcpy(m_to, from, RepeatedBytes::kStep);
        for (std::size_t at = RepeatedBytes::kStep; at < size; at += RepeatedBytes::kStep)
            std::memcpy(m_to + at, from + at, RepeatedBytes::kStep);
        m_to += size;
    }
    void write(const RepeatedBytes &bytes) { write(bytes, 0, bytes.size()); }
    /// At most three bytes a unit. A lone surrogate becomes U+FFFD.
    void write(QStringView text) { m_to = put(m_to, text, m_encoder); }

private:
    friend class Utf8Buffer;
    Utf8Pen(char *to, QStringEncoder &encoder) : m_to(to), m_encoder(encoder) { }

    static char *put(char *to, QStringView text, QStringEncoder &encoder);

    char *m_to;
    QStringEncoder &m_encoder;
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
    /// A lone surrogate becomes U+FFFD.
    void write(QStringView text)
    {
        Utf8Pen to = pen(3 * static_cast<std::size_t>(text.size()));
        to.write(text);
        take(to);
    }
    void write(char unit) { write(std::string_view(&unit, 1)); }

    /// For what takes at most so many bytes. It is lost unless take() follows before anything else is written.
    Utf8Pen pen(std::size_t bytes) { return {room(bytes + RepeatedBytes::kStep), m_encoder}; }
    void take(const Utf8Pen &pen) { m_used = static_cast<std::size_t>(pen.m_to - m_buffer.data()); }

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
