// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "results/OutlineViewController.h"

/// The chosen repair of several findings of one group: as if each were selected and repaired in turn, but one step of
/// the history.
class FixAll
{
public:
    enum class End {
        Repaired, ///< or its contact is left to be edited
        Covered, ///< an earlier repair took its node away
        Skipped, ///< its contact is gone
        Cancelled, ///< by the answer to a question
        Failed,
    };

    struct Step
    {
        PersonItemPtr finding;
        PersonRecordPtr before; ///< its contact
        End end;
        FixOutcome outcome; ///< of a repair
    };

    /// @p alertPanel is what the repairs ask. Both must outlive this.
    FixAll(OutlineViewController &controller, QList<PersonItemPtr> findings, AlertPanel &alertPanel);

    bool isAtEnd() const { return m_isStopped || m_done == m_findings.size(); }
    qsizetype done() const { return m_done; }
    /// Repairs the next finding; not at the end. The rest are not tried after a failure that leaves a change pending,
    /// which the next save would write after all.
    Step next();

private:
    OutlineViewController &m_controller;
    const QList<PersonItemPtr> m_findings;
    AlertPanel &m_alertPanel;
    ChangeCausePtr m_cause;
    qsizetype m_done = 0;
    bool m_isStopped = false;
};

/// What became of the findings, counted.
struct FixReport
{
    qsizetype repaired = 0;
    qsizetype skipped = 0;
    qsizetype failed = 0;
    qsizetype removed = 0; ///< contacts
    qsizetype added = 0; ///< contacts, by merges
    qsizetype left = 0; ///< not tried
    QString firstFailure;

    void count(FixAll::End end, const FixOutcome &outcome);
};
