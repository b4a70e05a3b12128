// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/AlertPanel.h"
#include "fix/Finding.h"

#include <QLoggingCategory>

/// The calls of the shared address book that a repair makes, noted in its outcome. Without a shared address book each
/// of them fails.
class RepairSteps
{
public:
    RepairSteps(FixOutcome &outcome, const Finding &finding) : m_outcome(outcome), m_cause(finding.cause) { }

    /// Fails for a person that was removed.
    bool addRecord(const ABPersonPtr &person, Error *error = nullptr);
    /// A failure is not noted: mostly the person is gone already.
    bool removeRecord(const ABPersonPtr &person, Error *error = nullptr);
    bool save(Error *error = nullptr);

private:
    bool note(bool done, const Error &failure, Error *error);

    FixOutcome &m_outcome;
    const ChangeCausePtr m_cause;
};

/// A line that is logged at one step of a deletion; no text: none.
struct DeletionLine
{
    const QLoggingCategory &(*category)() = nullptr;
    const char *text = nullptr;

    void log() const;
};

/// What handlers log of a deletion; that is all they differ in.
struct DeletionLines
{
    DeletionLine removed = {};
    DeletionLine saved = {};
    DeletionLine notRemoved = {};
    bool notRemovedSaysWhy = false; ///< the reason follows the text
    const char *sweptNode = nullptr;
};

/// Asks; then removes the person from the address book and, by a plain sweep, every node of it.
FixOutcome deleteContact(const Finding &finding, AlertPanel &alertPanel, const DeletionLines &lines);
