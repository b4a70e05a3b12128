// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"
#include "generator/FaultSchedule.h"
#include "generator/SplitMix64.h"
#include "generator/UniqueNames.h"

/// A contact while it is made up: complete and without fault at first, unless its name is one.
class RecordDraft
{
public:
    /// @p index must be the contact's own in the run, for it makes its e-mail addresses unique. @p name must outlive
    /// the draft.
    RecordDraft(const Name &name, qint64 index, SplitMix64 random);

    /// Marks the contact as a company, which may go without first or last name.
    void makeCompany();
    /// Replaces the first e-mail address by the one that the contact @p index has been given.
    void takeEmailOf(const Name &name, qint64 index);
    /// Makes the contact trip @p condition once. Nothing is to be done for the conditions that need several contacts or
    /// another name.
    void addFault(Condition condition);

    PersonRecord finish();

private:
    using Entries = std::vector<ABMultiValue::Entry>;

    void addNames();
    void addWork();
    void addOrganization();
    void addEmails();
    void addPhones();
    void addAddresses();
    void addOnlineAccounts();
    void addRelatedNames();
    void addNotes();

    void addInvalidText();
    void repeatEntry(Entries &entries);
    QString label(const QString &first, const QString &second);
    QString phoneNumber(const Country &country, quint32 ordinal);
    ABDictionary postalAddress(const Country &country, quint32 ordinal);
    QString withDigits(const QString &pattern);

    const Name &m_name;
    const Culture &m_culture;
    qint64 m_index;
    SplitMix64 m_random;
    const Country &m_country;
    PersonRecord m_record;
    Entries m_emails;
    Entries m_phones;
    Entries m_addresses;
};
