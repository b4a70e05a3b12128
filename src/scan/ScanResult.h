// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABAddressBook.h"
#include "scan/Conditions.h"

#include <QMetaType>

#include <variant>
#include <vector>

/// One e-mail address that several people hold.
struct EmailMatch
{
    ABPersonPtr searchedPerson;
    std::vector<ABPersonPtr> matchPersonsArray; ///< the others who hold it, in the order of the address book; not empty
    QString duplicateEmailType; ///< the label of the address in searchedPerson; null where it has none
    QString sharedAddress = {};

    friend bool operator==(const EmailMatch &, const EmailMatch &) = default;
};

/// What a condition found, in the order in which it found it; matches for ShareEmail, people for all others.
using Findings = std::variant<std::vector<ABPersonPtr>, std::vector<EmailMatch>>;

bool isEmpty(const Findings &findings);

/// The findings of a scan by condition. A condition that found nothing has no entry.
class ScanResult
{
public:
    using Entry = std::pair<Condition, Findings>;

    /// Replaces what the condition found before, in its place; empty findings are ignored.
    void insert(Condition condition, Findings findings);
    /// nullptr when the condition found nothing.
    const Findings *find(Condition condition) const;
    bool isEmpty() const { return m_entries.empty(); }

    /// In the order in which the conditions first found something.
    auto begin() const { return m_entries.begin(); }
    auto end() const { return m_entries.end(); }

private:
    std::vector<Entry> m_entries;
};

Q_DECLARE_METATYPE(ScanResult)
