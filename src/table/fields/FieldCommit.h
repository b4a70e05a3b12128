// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "table/fields/PersonDictionary.h"

/// Writes one edited field of the flat view back into a person.
///
/// What the flat view does not show of a multi-value (own labels, unknown services, further keys) is dropped by an edit
/// of any of its fields: the multi-value is built anew of the entries that have a field. Values are written as they
/// are: an empty text stays an empty text.
namespace FieldCommit {

/// Writes @p commitValue under the property and label of the field labelled @p fieldLabel into the person, then adds
/// the person to the shared address book (which it is in already) and saves. A label that belongs to no property
/// (FullName, Department, which is shown only, or any other text) writes nothing, but saves all the same.
/// The error is that of the property, of the addition or of the save; the person then keeps the change, and the next
/// save that succeeds writes it.
Result<void> commitContactsToAddressBook(
    const QString &fieldLabel, const FieldValue &commitValue, const ABPersonPtr &withPerson);

// For the four kinds of multi-value that hold several fields. They change the person and save nothing. The label must
// be one of the kind's own.

/// Leaves exactly three addresses: home, work and other, into which all addresses with other labels are merged.
void commitAddress(const QString &fieldLabel, const QString &commitValue, const ABPersonPtr &withPerson);
/// Leaves profiles of the five known services only, all under the home label. A profile other than Twitter's that has
/// no user name is dropped, even the edited one.
void commitSocailProfile(const QString &fieldLabel, const QString &commitValue, const ABPersonPtr &withPerson);
void commitRelateNames(const QString &fieldLabel, const QString &commitValue, const ABPersonPtr &withPerson);
/// Leaves accounts of the ten known services only; labels that are neither home nor work become other.
void commitInstantMassage(const QString &fieldLabel, const QString &commitValue, const ABPersonPtr &withPerson);

void copyHomeAddress(const ABDictionary &address, ABDictionary &toNewHomeDic);
void copyWorkAddress(const ABDictionary &address, ABDictionary &toNewWorkDic);
void copyOtherAddress(const ABDictionary &address, ABDictionary &toNewOtherDic);

/// Nothing is copied of an account of another than the ten services.
void copyHomeIM(
    const ABDictionary &account, ABMutableMultiValue &toNewInstantMassageValue, const QString &withServiceKey);
void copyWorkIM(
    const ABDictionary &account, ABMutableMultiValue &toNewInstantMassageValue, const QString &withServiceKey);
void copyOtherIM(
    const ABDictionary &account, ABMutableMultiValue &toNewInstantMassageValue, const QString &withServiceKey);

} // namespace FieldCommit
