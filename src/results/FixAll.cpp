// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/FixAll.h"

FixAll::FixAll(OutlineViewController &controller, QList<PersonItemPtr> findings, AlertPanel &alertPanel)
    : m_controller(controller), m_findings(std::move(findings)), m_alertPanel(alertPanel)
{
    if (!m_findings.isEmpty())
        m_cause = m_controller.causeOfRepair(m_findings);
}

FixAll::Step FixAll::next()
{
    const PersonItemPtr &finding = m_findings[m_done++];
    Step step{finding, finding->person()->record(), End::Repaired, {}};
    if (!m_controller.model().contains(finding)) {
        step.end = End::Covered;
        return step;
    }
    if (finding->isGone()) { // by an earlier merge
        step.end = End::Skipped;
        return step;
    }
    step.outcome = m_controller.repair(finding, m_cause, m_alertPanel);
    if (const auto &error = step.outcome.error) {
        step.end = End::Failed;
        // Only a conflict, where the other change wins, and a repair that was taken back are settled.
        m_isStopped = error->kind != ErrorKind::Conflict && error->uids.isEmpty();
    } else if (step.outcome.cancelled) {
        step.end = End::Cancelled;
    }
    return step;
}

void FixReport::count(FixAll::End end, const FixOutcome &outcome)
{
    repaired += end == FixAll::End::Repaired ? 1 : 0;
    skipped += end == FixAll::End::Skipped ? 1 : 0;
    failed += end == FixAll::End::Failed ? 1 : 0;
    removed += outcome.removed.size();
    added += outcome.added ? 1 : 0;
    if (outcome.error && firstFailure.isNull())
        firstFailure = outcome.error->description();
}
