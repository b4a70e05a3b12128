// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include <utility>
#include <variant>

enum class ErrorKind {
    NotFound, ///< does not exist (any more)
    Conflict, ///< changed by another program since it was read
    ReadOnly, ///< can be read but not changed
    Unavailable, ///< cannot be reached now, may work later (locked, no service)
    Invalid, ///< the input is malformed
    Io, ///< reading or writing failed
    Cancelled, ///< cancelled by the caller
};

/// Why something failed: one English line without a full stop that names the thing and the reason, ready to be shown to
/// the user.
struct Error
{
    ErrorKind kind = ErrorKind::Io;
    QString text;
    /// If a save was refused only because of these people.
    QStringList uids = {};

    const QString &description() const { return text; }
    friend bool operator==(const Error &, const Error &) = default;
};

/// A value or the reason why there is none. Stands in for C++23's std::expected.
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
