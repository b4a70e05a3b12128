// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/exchange/Exports.h"

#include "app/look/Counted.h"

#include <QFileInfo>

Exports::Exports(QWidget &window, ActivityLog &log)
    : m_log(log), m_panel(new ExportWindow(&window)), m_exporter(*m_panel)
{
    connect(&m_exporter, &ExportContact::exportFinished, this, &Exports::note);
}

void Exports::note(const ExportOutcome &outcome)
{
    const ExportReport &report = outcome.report;
    if (report.error)
        m_log.append(ActivityLog::Kind::Failure, report.error->description());
    if (report.paths.isEmpty())
        return;
    const QString first = report.paths.front();
    const QString others = report.paths.size() > 1 ? tr(" and %1 more").arg(report.paths.size() - 1) : QString();
    m_log.append(ActivityLog::Kind::Done,
        tr("%1: %2 written to %3%4")
            .arg(outcome.format, counted(outcome.rows, tr("contact"), tr("contacts")), first, others),
        QFileInfo(first).path());
    if (!report.repairs.isEmpty())
        m_log.append(
            ActivityLog::Kind::Failure, tr("%1 does not hold everything: %2").arg(first, report.repairs.description()));
    if (!report.remark.isEmpty())
        m_log.append(ActivityLog::Kind::Done, tr("%1: %2").arg(first, report.remark));
}
