// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABAddressBook.h"
#include "scan/Conditions.h"

#include <QMetaType>

#include <variant>
#include <vector>

/// An e-mail address shared by several people.
struct EmailMatch
{
    ABPersonPtr searchedPerson;
    std::vector<ABPersonPtr> matchPersonsArray; ///< the others with it, in address book order; not empty
    QString duplicateEmailType; ///< its label in searchedPerson; null without one
    QString sharedAddress = {};

    friend bool operator==(const EmailMatch &, const EmailMatch &) = default;
};

/// The findings of a condition, in the order found; matches for ShareEmail, people for all others.
using Findings = std::variant<std::vector<ABPersonPtr>, std::vector<EmailMatch>>;

bool isEmpty(const Findings &findings);

/// The findings of a scan by condition. A condition that found nothing has no entry.
class ScanResult
{
public:
    using Entry = std::pair<Condition, Findings>;

    /// Replaces the condition's earlier findings in place; empty findings are ignored.
    void insert(Condition condition, Findings findings);
    /// nullptr if the condition found nothing.
    const Findings *find(Condition condition) const;
    bool isEmpty() const { return m_entries.empty(); }

    /// In the order in which the conditions first found something.
    auto begin() const { return m_entries.begin(); }
    auto end() const { return m_entries.end(); }

private:
    std::vector<Entry> m_entries;
};

Q_DECLARE_METATYPE(ScanResult)
