// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/AlertPanel.h"
#include "fix/Finding.h"

#include <QLoggingCategory>

/// A repair's calls of the shared address book, recorded in its outcome. Without a shared address book all fail.
class RepairSteps
{
public:
    RepairSteps(FixOutcome &outcome, const Finding &finding) : m_outcome(outcome), m_cause(finding.cause) { }

    /// Fails for a removed person.
    bool addRecord(const ABPersonPtr &person, Error *error = nullptr);
    /// A failure is not recorded: usually the person is already gone.
    bool removeRecord(const ABPersonPtr &person, Error *error = nullptr);
    bool save(Error *error = nullptr);

private:
    bool note(bool done, const Error &failure, Error *error);

    FixOutcome &m_outcome;
    const ChangeCausePtr m_cause;
};

/// A line logged at one step of a deletion; empty: none.
struct DeletionLine
{
    const QLoggingCategory &(*category)() = nullptr;
    const char *text = nullptr;

    void log() const;
};

/// The log lines of a deletion, in which handlers differ.
struct DeletionLines
{
    DeletionLine removed = {};
    DeletionLine saved = {};
    DeletionLine notRemoved = {};
    bool notRemovedSaysWhy = false; ///< the reason follows the text
    const char *sweptNode = nullptr;
};

/// Asks, then removes the person from the address book and, by a plain sweep, all its nodes.
FixOutcome deleteContact(const Finding &finding, AlertPanel &alertPanel, const DeletionLines &lines);
