// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"
#include "contacts/book/ChangeCause.h"
#include "scan/ScanResult.h"

#include <QList>

/// One thing that a scan objects to.
struct Finding
{
    Condition condition{};
    ABPersonPtr person = {}; ///< not null
    // Only for ShareEmail; some of the others may have been removed since:
    QList<ABPersonPtr> duplicateEmailArray = {}; ///< the others who hold the address
    QString duplicateEmailType = {}; ///< the label of the address in person; null where it has none
    QString sharedAddress = {}; ///< a person may share several under one label

    ChangeCausePtr cause = {}; ///< what the history calls a repair of it
};

/// What a scan found for the condition, in its order.
std::vector<Finding> findingsOf(const ScanResult &result, Condition condition);

/// What a repair did, and what is to become of the tree that showed the finding.
struct FixOutcome
{
    enum class Sweep {
        Plain, ///< every node of the person goes, groups stay even when they are empty then
        Pruning, ///< groups that are empty go as well
    };

    bool cancelled = false; ///< the user said no; nothing was done and the tree stays as it is
    bool removesNode = false; ///< the finding's own node goes
    bool editsInContacts = false; ///< the person is to be opened for editing in a contacts application
    QStringList sweptUids; ///< whose other nodes go too, in this order
    Sweep sweep = Sweep::Plain;
    const char *lineOfSweptNode = nullptr; ///< for the log, once for each node that a sweep removes

    QList<ABPersonPtr> removed; ///< taken out of the address book
    ABPersonPtr added; ///< made by a merge; null when there was none
    /// Why something could not be written; it stays pending in the address book. Not set when a later save of the same
    /// repair wrote it after all.
    std::optional<Error> error;
};
