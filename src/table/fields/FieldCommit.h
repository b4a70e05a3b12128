// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "table/fields/PersonDictionary.h"

/// Writes an edited field of the flat view back into a person.
///
/// An edit of any field drops the entries of its multi-value that the flat view does not show (custom labels, unknown
/// services, further keys): the list is rebuilt from the entries with a field. Values are written unchanged; an empty
/// text stays an empty text.
namespace FieldCommit {

/// Writes @p commitValue under the property and label of the field labelled @p fieldLabel, then adds the person to the
/// shared address book (where it already is) and saves. Labels without a property (FullName, the read-only Department,
/// or any other text) write nothing, but save all the same. The error is that of the property, the addition or the
/// save; the person then keeps the change, and the next successful save writes it.
Result<void> commitContactsToAddressBook(
    const QString &fieldLabel, const FieldValue &commitValue, const ABPersonPtr &withPerson);

// For the four kinds of multi-value with several fields. They change the person without saving. The label must belong
// to the kind.

/// Leaves exactly three addresses: home, work and other, which absorbs all other labels.
void commitAddress(const QString &fieldLabel, const QString &commitValue, const ABPersonPtr &withPerson);
/// Leaves only profiles of the five known services, all labelled home. A profile without a user name is dropped, even
/// the edited one, except for Twitter's.
void commitSocailProfile(const QString &fieldLabel, const QString &commitValue, const ABPersonPtr &withPerson);
void commitRelateNames(const QString &fieldLabel, const QString &commitValue, const ABPersonPtr &withPerson);
/// Leaves only accounts of the ten known services; labels that are neither home nor work become other.
void commitInstantMassage(const QString &fieldLabel, const QString &commitValue, const ABPersonPtr &withPerson);

void copyHomeAddress(const ABDictionary &address, ABDictionary &toNewHomeDic);
void copyWorkAddress(const ABDictionary &address, ABDictionary &toNewWorkDic);
void copyOtherAddress(const ABDictionary &address, ABDictionary &toNewOtherDic);

/// Copies nothing for other services than the ten.
void copyHomeIM(
    const ABDictionary &account, ABMutableMultiValue &toNewInstantMassageValue, const QString &withServiceKey);
void copyWorkIM(
    const ABDictionary &account, ABMutableMultiValue &toNewInstantMassageValue, const QString &withServiceKey);
void copyOtherIM(
    const ABDictionary &account, ABMutableMultiValue &toNewInstantMassageValue, const QString &withServiceKey);

} // namespace FieldCommit
