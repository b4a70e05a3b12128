// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/book/ABSearchElement.h"
#include "contacts/model/PersonRecord.h"

#include <atomic>

class PendingChanges;

/// One person of an address book: a reference object, the same for everybody who holds it, compared by identity.
///
/// Any thread may read and change it. A reader who needs several values that belong together takes record() once:
/// a change swaps the whole record and never touches one that was handed out. Changes of a person that belongs to an
/// address book are pending there until its save().
class ABPerson : public std::enable_shared_from_this<ABPerson>
{
public:
    /// A new, empty person with a new uid, in no address book yet.
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
    /// The same by the property's name; absent for a name that is none.
    ABValue valueForKey(QStringView key) const;
    /// False, with the reason in @p error if given, and nothing changed: the value does not fit the property, or one of
    /// its texts is no valid UTF-16 (it could not be stored as it is).
    bool setValue(const ABValue &value, ABProperty forProperty, Error *error = nullptr);
    /// True also when it was absent before; false only for the uid.
    bool removeValueForProperty(ABProperty property);

    /// The picture as image file data.
    std::optional<QByteArray> imageData() const;
    /// Empty bytes remove the picture.
    void setImageData(const QByteArray &bytes);
    /// The whole record, lines kept from an imported card included, replaced in one step.
    void replaceRecord(const PersonRecordPtr &record);

    /// Everything known of the person as one vCard 3.0.
    QByteArray vCardRepresentation() const;

    /// Only the comparison kABEqual exists and keys are not searched; anything else matches no one.
    static ABSearchElement searchElementForProperty(ABProperty property, const std::optional<QString> &label,
        const std::optional<QString> &key, const QString &value, int comparison);

    /// Taken out of its address book, by this program or another one. Only a removal that was not saved can be taken
    /// back; after that the person cannot be added again.
    bool isRemoved() const { return m_isRemoved; }
    /// Not as it was saved; see AddressBookStore::damagedPeople().
    bool isDamaged() const { return m_isDamaged; }

private:
    friend class ABAddressBook;
    friend class PeopleList;

    template <typename Edit> void change(Edit edit);
    // For the address book. The first three make the person agree with the store without noting a change.
    void settle(const PersonRecordPtr &stored);
    void rebase(const PersonRecordPtr &before, const PersonRecordPtr &now);
    void setStoredRecord(const PersonRecordPtr &stored);
    std::shared_ptr<PendingChanges> pendingChanges() const;
    void setPendingChanges(const std::shared_ptr<PendingChanges> &changes);

    const QString m_uid;
    // Both are guarded by one of a few mutexes that all people share: one mutex each would cost more than the record.
    PersonRecordPtr m_record;
    std::shared_ptr<PendingChanges> m_pendingChanges; // of the address book it belongs to; null otherwise
    quint64 m_order = 0; // where it stands in its address book's PeopleList, with it; 0: it was in none yet
    std::atomic<bool> m_isRemoved = false;
    std::atomic<bool> m_isDamaged = false;
};

using ABPersonPtr = std::shared_ptr<ABPerson>;
