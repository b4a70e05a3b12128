// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/book/ABSearchElement.h"
#include "contacts/model/PersonRecord.h"

#include <atomic>

class PendingChanges;

/// One person of an address book: a reference object, compared by identity.
///
/// Any thread may read and change it. For several consistent values take record() once: a change swaps the whole record
/// and never modifies one already handed out. Changes of a person in an address book are pending there until its
/// save().
class ABPerson : public std::enable_shared_from_this<ABPerson>
{
public:
    /// A new, empty person with a new uid, in no address book.
    ABPerson();
    ABPerson(QString uid, PersonRecordPtr record);
    ABPerson(const ABPerson &) = delete;
    ABPerson &operator=(const ABPerson &) = delete;

    /// Stable across runs.
    const QString &uniqueId() const { return m_uid; }
    /// Never null.
    PersonRecordPtr record() const;

    /// std::monostate when absent.
    ABValue valueForProperty(ABProperty property) const;
    /// By the property's name; absent for an unknown name.
    ABValue valueForKey(QStringView key) const;
    /// False, with the reason in @p error and nothing changed, if the value does not fit the property or contains
    /// invalid UTF-16, which could not be stored.
    bool setValue(const ABValue &value, ABProperty forProperty, Error *error = nullptr);
    /// False only for the uid.
    bool removeValueForProperty(ABProperty property);

    /// The picture as image file data.
    std::optional<QByteArray> imageData() const;
    /// Empty bytes remove the picture.
    void setImageData(const QByteArray &bytes);
    /// Replaces the whole record, including lines kept from an imported card, in one step.
    void replaceRecord(const PersonRecordPtr &record);

    /// Everything known about the person as a vCard 3.0.
    QByteArray vCardRepresentation() const;

    /// Only kABEqual is supported and keys are not searched; anything else matches no one.
    static ABSearchElement searchElementForProperty(ABProperty property, const std::optional<QString> &label,
        const std::optional<QString> &key, const QString &value, int comparison);

    /// Removed from its address book, by this program or another one. Only an unsaved removal can be undone; after that
    /// the person cannot be added again.
    bool isRemoved() const { return m_isRemoved; }
    /// See AddressBookStore::damagedPeople().
    bool isDamaged() const { return m_isDamaged; }

private:
    friend class ABAddressBook;
    friend class PeopleList;

    template <typename Edit> void change(Edit edit);
    // For the address book. The first three update the person from the store without recording a change.
    void settle(const PersonRecordPtr &stored);
    void rebase(const PersonRecordPtr &before, const PersonRecordPtr &now);
    void setStoredRecord(const PersonRecordPtr &stored);
    std::shared_ptr<PendingChanges> pendingChanges() const;
    void setPendingChanges(const std::shared_ptr<PendingChanges> &changes);

    const QString m_uid;
    // Both guarded by one of a few mutexes for all people; one per person would cost more than the record.
    PersonRecordPtr m_record;
    std::shared_ptr<PendingChanges> m_pendingChanges; // of its address book; null without one
    quint64 m_order = 0; // position in its address book's PeopleList, guarded with it; 0: in none yet
    std::atomic<bool> m_isRemoved = false;
    std::atomic<bool> m_isDamaged = false;
};

using ABPersonPtr = std::shared_ptr<ABPerson>;

/// In the order of the people.
template <typename People> QStringList uidsOf(const People &people)
{
    QStringList uids;
    for (const ABPersonPtr &person : people)
        uids += person->uniqueId();
    return uids;
}
