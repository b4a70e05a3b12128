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

/// Any property's value; std::monostate where the property is absent.
using ABValue = std::variant<std::monostate, QString, QDate, qint64, ABMultiValue>;

/// A vCard line that holds more than the record models, kept so that a full card can carry it again.
struct KeptLine
{
    /// One unfolded vCard 3.0 content line, decoded to Unicode, without line end.
    QString text;
    /// Null (isNull): the line has no counterpart in the record and is always written. Otherwise the plain line(s) the
    /// writer makes of the value that this line was read into: as long as it still makes them, `text` replaces them,
    /// and once the value has changed the kept line no longer applies.
    QString basis;

    friend bool operator==(const KeptLine &a, const KeptLine &b)
    {
        return a.text == b.text && a.basis.isNull() == b.basis.isNull() && a.basis == b.basis;
    }
};

/// All values of one person, without identity. Absent and empty differ for every property.
/// A plain value; share it between threads only as PersonRecordPtr.
class PersonRecord
{
public:
    /// nullptr when absent; valid until the record changes. Only for properties of the kind Text.
    const QString *text(ABProperty property) const
    {
        const QString &value = m_texts[static_cast<std::size_t>(property)];
        return value.isNull() ? nullptr : &value;
    }
    /// nullptr when absent. Only for properties of the kinds MultiText and MultiDictionary.
    const ABMultiValue *multiValue(ABProperty property) const
    {
        const std::size_t slot = multiSlot(property);
        return m_presentMultiValues.test(slot) ? &m_multiValues[slot] : nullptr;
    }
    std::optional<QDate> birthday() const { return m_birthday.isNull() ? std::nullopt : std::optional(m_birthday); }
    std::optional<qint64> flags() const { return m_flags; }
    /// The picture as the bytes of an image file; nullptr when there is none.
    const QByteArray *imageData() const { return m_image.isNull() ? nullptr : &m_image; }
    bool hasImageOf(const PersonRecord &other) const { return m_image == other.m_image; }
    const std::vector<KeptLine> &keptLines() const;

    /// A null text counts as an empty one.
    void setText(ABProperty property, QString text);
    void setMultiValue(ABProperty property, ABMultiValue value);
    /// @p date must be valid and of the years 1 to 9999.
    void setBirthday(QDate date) { m_birthday = date; }
    void setFlags(qint64 flags) { m_flags = flags; }
    /// Empty bytes remove the picture.
    void setImageData(const QByteArray &bytes);
    void setKeptLines(std::vector<KeptLine> lines);

    ABValue value(ABProperty property) const;
    /// False, and nothing is changed, when @p value is not of the property's type, is absent, is no date of the years
    /// 1 to 9999, or holds dictionaries with keys of another property; also for the uid, which is no part of a record.
    bool setValue(ABProperty property, const ABValue &value);
    /// Makes the property absent.
    void removeValue(ABProperty property);

    /// Equal in all that the record models, whatever lines are kept beside it.
    bool hasSameValues(const PersonRecord &other) const;
    friend bool operator==(const PersonRecord &a, const PersonRecord &b);

private:
    static constexpr std::size_t kTextCount = static_cast<std::size_t>(ABProperty::Note) + 1;
    static constexpr std::size_t kFirstMulti = static_cast<std::size_t>(ABProperty::Email);
    static constexpr std::size_t kMultiCount = static_cast<std::size_t>(ABProperty::SocialProfile) + 1 - kFirstMulti;
    static constexpr std::size_t multiSlot(ABProperty property)
    {
        return static_cast<std::size_t>(property) - kFirstMulti;
    }

    std::array<QString, kTextCount> m_texts; // a null text is an absent one: half the size of optional texts
    std::array<ABMultiValue, kMultiCount> m_multiValues; // empty where absent
    std::bitset<kMultiCount> m_presentMultiValues;
    QDate m_birthday; // null when absent
    std::optional<qint64> m_flags;
    QByteArray m_image; // null when absent
    std::shared_ptr<const std::vector<KeptLine>> m_keptLines; // null when there are none, as for most people
};

/// @p base with what changed from @p before to @p after, property by property; what did not change stays as in @p base.
PersonRecord withChanges(PersonRecord base, const PersonRecord &before, const PersonRecord &after);

/// A record that nobody changes any more, so any thread may read it.
using PersonRecordPtr = std::shared_ptr<const PersonRecord>;

/// A record under its uid, as stores hand it over.
struct StoredRecord
{
    QString uid;
    PersonRecordPtr record;
};

/// Whether @p one and @p other both changed the same of @p before, each to something else.
bool changesClash(const PersonRecord &before, const PersonRecord &one, const PersonRecord &other);
