// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"
#include "contacts/book/ChangeCause.h"
#include "scan/ScanResult.h"

#include <QList>

#include <functional>

/// One finding of a scan.
struct Finding
{
    Condition condition{};
    ABPersonPtr person = {}; ///< not null
    // Only for ShareEmail; some of the others may since have been removed:
    QList<ABPersonPtr> duplicateEmailArray = {}; ///< the others with the address
    QString duplicateEmailType = {}; ///< its label in person; null without one
    QString sharedAddress = {}; ///< a person may share several under one label

    ChangeCausePtr cause = {}; ///< for the history
};

/// Whether findings of the condition are about several people, whom a merge would make one.
constexpr bool isOfSeveral(Condition condition)
{
    return condition == Condition::DuplicateContacts || condition == Condition::ShareEmail;
}

/// The findings of a condition, in order.
std::vector<Finding> findingsOf(const ScanResult &result, Condition condition);
/// Only those findings, in their order.
ScanResult filtered(const ScanResult &result, const std::function<bool(const Finding &)> &isWanted);

/// The same for one finding in two scans for its condition.
QString keyOf(const Finding &finding);

/// What a repair did, and how to update the tree.
struct FixOutcome
{
    enum class Sweep {
        Plain, ///< removes every node of the person; empty groups stay
        Pruning, ///< also removes empty groups
    };

    bool cancelled = false; ///< the user declined; nothing was done
    bool removesNode = false; ///< remove the finding's node
    bool editsInContacts = false; ///< open the person in a contacts application
    QStringList sweptUids; ///< remove other nodes of these people, in this order
    Sweep sweep = Sweep::Plain;
    const char *lineOfSweptNode = nullptr; ///< logged for each node that a sweep removes

    QList<ABPersonPtr> removed; ///< taken out of the address book
    ABPersonPtr added; ///< made by a merge; otherwise null
    /// What could not be written; it stays pending in the address book. Not set if a later save of the same repair
    /// wrote it.
    std::optional<Error> error;
};
