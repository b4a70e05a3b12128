// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include <utility>
#include <variant>

enum class ErrorKind {
    NotFound, ///< the thing named does not exist (any more)
    Conflict, ///< another program changed it since it was read
    ReadOnly, ///< it may be read but not changed
    Unavailable, ///< cannot be reached now; may work later (locked, no service)
    Invalid, ///< the input is not what it claims to be
    Io, ///< reading or writing failed
    Cancelled, ///< it was given up by the one who asked for it
};

/// Why something was refused. The text is one English line without a full stop that names the thing and the reason;
/// it can be shown to the user as it is.
struct Error
{
    ErrorKind kind = ErrorKind::Io;
    QString text;
    /// Of the people concerned, where a save was refused because of their part only.
    QStringList uids = {};

    const QString &description() const { return text; }
    friend bool operator==(const Error &, const Error &) = default;
};

/// Either a value or the reason why there is none. Stands in for std::expected, which C++20 lacks.
template <typename T> class [[nodiscard]] Result
{
public:
    Result(T value) : m_state(std::move(value)) { }
    Result(Error error) : m_state(std::move(error)) { }

    explicit operator bool() const { return std::holds_alternative<T>(m_state); }
    /// Only when the result holds a value.
    T &value() { return std::get<T>(m_state); }
    const T &value() const { return std::get<T>(m_state); }
    T *operator->() { return &value(); }
    const T *operator->() const { return &value(); }
    T &operator*() { return value(); }
    const T &operator*() const { return value(); }
    /// Only when the result holds no value.
    const Error &error() const { return std::get<Error>(m_state); }

private:
    std::variant<T, Error> m_state;
};

template <> class [[nodiscard]] Result<void> : public Result<std::monostate>
{
public:
    Result() : Result<std::monostate>(std::monostate()) { }
    Result(Error error) : Result<std::monostate>(std::move(error)) { }
};
