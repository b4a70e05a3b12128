// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/ABMultiValue.h"

#include <QByteArray>
#include <QDate>

#include <array>
#include <bitset>
#include <memory>
#include <optional>
#include <variant>

/// Any property's value; std::monostate if absent.
using ABValue = std::variant<std::monostate, QString, QDate, qint64, ABMultiValue>;

/// A vCard line that says more than the record models, kept so that it can be written again.
struct KeptLine
{
    /// One unfolded vCard 3.0 content line as Unicode, without line end.
    QString text;
    /// Null (isNull): always written. Otherwise the plain line(s) that the writer makes of the value read from this
    /// line: `text` replaces them while the writer still makes them; once the value has changed, the kept line no
    /// longer applies.
    QString basis;

    friend bool operator==(const KeptLine &a, const KeptLine &b)
    {
        return a.text == b.text && a.basis.isNull() == b.basis.isNull() && a.basis == b.basis;
    }
};

/// All values of one person, without identity. Absent and empty differ for every property. A plain value; share it
/// between threads only as PersonRecordPtr.
class PersonRecord
{
public:
    /// nullptr if absent; valid until the record changes. Only for the kind Text.
    const QString *text(ABProperty property) const
    {
        const QString &value = textOrEmpty(property);
        return value.isNull() ? nullptr : &value;
    }
    /// Null, which is empty, if absent. Only for the kind Text.
    const QString &textOrEmpty(ABProperty property) const { return m_texts[static_cast<std::size_t>(property)]; }
    /// nullptr if absent. Only for the kinds MultiText and MultiDictionary.
    const ABMultiValue *multiValue(ABProperty property) const
    {
        const std::size_t slot = multiSlot(property);
        return m_presentMultiValues.test(slot) ? &m_multiValues[slot] : nullptr;
    }
    /// The same; none if absent.
    std::span<const ABMultiValue::Entry> entries(ABProperty property) const
    {
        return m_multiValues[multiSlot(property)].entries();
    }
    std::optional<QDate> birthday() const { return m_birthday.isNull() ? std::nullopt : std::optional(m_birthday); }
    std::optional<qint64> flags() const { return m_flags; }
    /// The bytes of an image file; nullptr if there is none.
    const QByteArray *imageData() const { return m_image.isNull() ? nullptr : &m_image; }
    bool hasImageOf(const PersonRecord &other) const { return m_image == other.m_image; }
    const std::vector<KeptLine> &keptLines() const;

    /// Null counts as empty.
    void setText(ABProperty property, QString text);
    void setMultiValue(ABProperty property, ABMultiValue value);
    /// @p date must be valid, in the years 1 to 9999.
    void setBirthday(QDate date) { m_birthday = date; }
    void setFlags(qint64 flags) { m_flags = flags; }
    /// Empty bytes remove the picture.
    void setImageData(const QByteArray &bytes);
    void setKeptLines(std::vector<KeptLine> lines);

    ABValue value(ABProperty property) const;
    /// False, with nothing changed, if @p value has the wrong type, is absent, is no date of the years 1 to 9999, or
    /// holds dictionaries with keys of another property; also for the uid, which is not part of a record.
    bool setValue(ABProperty property, const ABValue &value);
    void removeValue(ABProperty property);

    /// Compares everything except kept lines.
    bool hasSameValues(const PersonRecord &other) const;
    friend bool operator==(const PersonRecord &a, const PersonRecord &b);

private:
    static constexpr std::size_t kTextCount = static_cast<std::size_t>(kABNoteProperty) + 1;
    static constexpr std::size_t kFirstMulti = static_cast<std::size_t>(kABEmailProperty);
    static constexpr std::size_t kMultiCount = static_cast<std::size_t>(kABSocialProfileProperty) + 1 - kFirstMulti;
    static constexpr std::size_t multiSlot(ABProperty property)
    {
        return static_cast<std::size_t>(property) - kFirstMulti;
    }

    std::array<QString, kTextCount> m_texts; // null if absent: smaller than optional texts
    std::array<ABMultiValue, kMultiCount> m_multiValues; // empty where absent
    std::bitset<kMultiCount> m_presentMultiValues;
    QDate m_birthday; // null when absent
    std::optional<qint64> m_flags;
    QByteArray m_image; // null when absent
    std::shared_ptr<const std::vector<KeptLine>> m_keptLines; // null when there are none, as for most people
};

/// @p base with the changes from @p before to @p after, property by property.
PersonRecord withChanges(PersonRecord base, const PersonRecord &before, const PersonRecord &after);

/// A record that no longer changes, safe to read from any thread.
using PersonRecordPtr = std::shared_ptr<const PersonRecord>;

/// A record with its uid, as stores return it.
struct StoredRecord
{
    QString uid;
    PersonRecordPtr record;
};

/// Whether both changed the same property of @p before to different values.
bool changesClash(const PersonRecord &before, const PersonRecord &one, const PersonRecord &other);
