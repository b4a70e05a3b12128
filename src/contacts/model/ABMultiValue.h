// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/ABDictionary.h"

#include <QList>

#include <span>
#include <variant>

/// An ordered list of labelled values of one type, immutable and implicitly shared; copying is cheap and safe from any
/// thread. Equal values and labels may repeat.
class ABMultiValue
{
public:
    using Value = std::variant<QString, ABDictionary>;

    struct Entry
    {
        QString label; ///< null (isNull) without a label, which differs from an empty one
        Value value;

        /// Only for entries that hold a text.
        const QString &text() const { return std::get<QString>(value); }
        /// Only for entries that hold a dictionary.
        const ABDictionary &dictionary() const { return std::get<ABDictionary>(value); }
        friend bool operator==(const Entry &a, const Entry &b);
    };

    ABMultiValue() = default;
    explicit ABMultiValue(QList<Entry> entries);
    /// Moves the entries out, and leaves the list its memory.
    explicit ABMultiValue(std::vector<Entry> &&entries);

    qsizetype count() const { return m_entries.size(); }
    /// Require 0 <= index < count().
    const Value &valueAtIndex(qsizetype index) const { return m_entries[index].value; }
    const QString &labelAtIndex(qsizetype index) const { return m_entries[index].label; }

    std::span<const Entry> entries() const { return m_entries; }

    /// Compares values, labels and order.
    friend bool operator==(const ABMultiValue &, const ABMultiValue &) = default;

protected:
    QList<Entry> m_entries;
};

/// Hashes values consistently with ==.
struct ABValueHash
{
    std::size_t operator()(const ABMultiValue::Value &value) const;
};

/// A multi-value under construction. Earlier copies do not change when more is added.
class ABMutableMultiValue : public ABMultiValue
{
public:
    /// A null label means none.
    void addValue(const Value &value, const QString &withLabel);
};
