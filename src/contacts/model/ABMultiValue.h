// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/ABDictionary.h"

#include <QList>

#include <span>
#include <variant>

/// An ordered list of labelled values, immutable and implicitly shared; copying is cheap and safe from any thread.
/// All values of one list are of the same type. Equal values and equal labels may occur several times.
class ABMultiValue
{
public:
    using Value = std::variant<QString, ABDictionary>;

    struct Entry
    {
        QString label; ///< a null text (isNull) where the entry has no label, which differs from an empty one
        Value value;

        /// The value as a text; only for entries that hold one.
        const QString &text() const { return std::get<QString>(value); }
        /// The value as a dictionary; only for entries that hold one.
        const ABDictionary &dictionary() const { return std::get<ABDictionary>(value); }
        friend bool operator==(const Entry &a, const Entry &b);
    };

    ABMultiValue() = default;
    explicit ABMultiValue(QList<Entry> entries);
    explicit ABMultiValue(std::vector<Entry> entries);

    qsizetype count() const { return m_entries.size(); }
    /// Both need 0 <= index < count().
    const Value &valueAtIndex(qsizetype index) const { return m_entries[index].value; }
    const QString &labelAtIndex(qsizetype index) const { return m_entries[index].label; }

    std::span<const Entry> entries() const { return m_entries; }

    /// Equal when count, values, labels and order are.
    friend bool operator==(const ABMultiValue &, const ABMultiValue &) = default;

protected:
    QList<Entry> m_entries;
};

/// Hashes a value, so that equal ones meet.
struct ABValueHash
{
    std::size_t operator()(const ABMultiValue::Value &value) const;
};

/// A multi-value under construction. Copies made of it so far do not change when more is added.
class ABMutableMultiValue : public ABMultiValue
{
public:
    /// Appends an entry; a null label stands for none.
    void addValue(const Value &value, const QString &withLabel);
};
