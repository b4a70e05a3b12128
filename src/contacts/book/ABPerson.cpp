// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/ABPerson.h"

#include "contacts/book/PendingChanges.h"
#include "contacts/cards/VCardWriter.h"

#include <QUuid>

#include <algorithm>
#include <array>
#include <mutex>

namespace {

std::mutex &mutexOf(const ABPerson *person)
{
    static std::array<std::mutex, 64> mutexes;
    // People are allocated some 128 bytes apart, so the low bits of their addresses say nothing.
    return mutexes[(reinterpret_cast<std::uintptr_t>(person) >> 7) % mutexes.size()];
}

bool isStorable(const QString &text)
{
    return text.isValidUtf16();
}

bool isStorable(const ABMultiValue &value)
{
    return std::ranges::all_of(value.entries(), [](const ABMultiValue::Entry &entry) {
        if (!isStorable(entry.label))
            return false;
        if (const auto *text = std::get_if<QString>(&entry.value))
            return isStorable(*text);
        return std::ranges::all_of(
            entry.dictionary(), [](const ABDictionary::Entry &part) { return isStorable(part.second); });
    });
}

bool isStorable(const ABValue &value)
{
    if (const auto *text = std::get_if<QString>(&value))
        return isStorable(*text);
    if (const auto *values = std::get_if<ABMultiValue>(&value))
        return isStorable(*values);
    return true;
}

} // namespace

ABPerson::ABPerson()
    : ABPerson(QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper(), std::make_shared<const PersonRecord>())
{ }

ABPerson::ABPerson(QString uid, PersonRecordPtr record) : m_uid(std::move(uid)), m_record(std::move(record)) { }

PersonRecordPtr ABPerson::record() const
{
    const std::scoped_lock lock(mutexOf(this));
    return m_record;
}

ABValue ABPerson::valueForProperty(ABProperty property) const
{
    return property == kABUIDProperty ? ABValue(m_uid) : record()->value(property);
}

ABValue ABPerson::valueForKey(QStringView key) const
{
    const auto property = propertyNamed(key);
    return property ? valueForProperty(*property) : ABValue();
}

template <typename Edit> void ABPerson::change(Edit edit)
{
    const std::scoped_lock lock(mutexOf(this));
    auto changed = std::make_shared<PersonRecord>(*m_record);
    edit(*changed);
    if (*changed == *m_record)
        return;
    if (m_pendingChanges) {
        m_pendingChanges->noteChange(shared_from_this(), m_record);
        m_pendingChanges->touch();
    }
    m_record = std::move(changed);
}

bool ABPerson::setValue(const ABValue &value, ABProperty forProperty, Error *error)
{
    const auto refuse = [&](const QString &reason) {
        if (error)
            *error = {ErrorKind::Invalid, QString(propertyInfo(forProperty).name) % QStringLiteral(": ") % reason};
        return false;
    };
    if (!isStorable(value))
        return refuse(QStringLiteral("the text holds half of a surrogate pair"));
    if (!PersonRecord().setValue(forProperty, value))
        return refuse(QStringLiteral("the value is not of the property's type"));
    change([&](PersonRecord &record) { record.setValue(forProperty, value); });
    return true;
}

bool ABPerson::removeValueForProperty(ABProperty property)
{
    if (property == kABUIDProperty)
        return false;
    change([property](PersonRecord &record) { record.removeValue(property); });
    return true;
}

std::optional<QByteArray> ABPerson::imageData() const
{
    const auto current = record();
    const QByteArray *image = current->imageData();
    return image ? std::optional(*image) : std::nullopt;
}

void ABPerson::setImageData(const QByteArray &bytes)
{
    change([&bytes](PersonRecord &record) { record.setImageData(bytes); });
}

void ABPerson::replaceRecord(const PersonRecordPtr &record)
{
    change([&record](PersonRecord &current) { current = *record; });
}

QByteArray ABPerson::vCardRepresentation() const
{
    return vCardFromRecord(m_uid, *record());
}

ABSearchElement ABPerson::searchElementForProperty(ABProperty property, const std::optional<QString> &label,
    const std::optional<QString> &key, const QString &value, int comparison)
{
    // The uid is no multi-value, so an element on it matches no one.
    const bool supported = comparison == kABEqual && !key;
    return {supported ? property : kABUIDProperty, label, value};
}

void ABPerson::settle(const PersonRecordPtr &stored)
{
    const std::scoped_lock lock(mutexOf(this));
    if (m_pendingChanges)
        m_pendingChanges->settle(this, stored, m_record != stored);
}

void ABPerson::rebase(const PersonRecordPtr &before, const PersonRecordPtr &now)
{
    const std::scoped_lock lock(mutexOf(this));
    m_record = std::make_shared<const PersonRecord>(withChanges(*now, *before, *m_record));
    m_pendingChanges->touch();
    m_pendingChanges->settle(this, now, true);
}

void ABPerson::setStoredRecord(const PersonRecordPtr &stored)
{
    const std::scoped_lock lock(mutexOf(this));
    m_record = stored;
    m_pendingChanges->touch();
    m_pendingChanges->settle(this, stored, false);
}

std::shared_ptr<PendingChanges> ABPerson::pendingChanges() const
{
    const std::scoped_lock lock(mutexOf(this));
    return m_pendingChanges;
}

void ABPerson::setPendingChanges(const std::shared_ptr<PendingChanges> &changes)
{
    const std::scoped_lock lock(mutexOf(this));
    m_pendingChanges = changes;
    if (!changes)
        m_order = 0;
}
