// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/CommandContext.h"
#include "cli/ConsoleAlertPanel.h"
#include "table/grid/LoadContactsViewController.h"

/// The contact table for the command line, filled immediately. Failures are printed.
class ContactTable : public ContactTableDelegate
{
public:
    ContactTable(const std::shared_ptr<ABAddressBook> &book, const CommandContext &context, bool answeredInAdvance);

    void makeFreshButtonEnable() override { }
    AlertPanel &alertPanel() override { return m_alertPanel; }
    RowExporter *rowExporter() override { return m_rowExporter; }
    /// Must outlive the table. Null: no exports.
    void setRowExporter(RowExporter *exporter) { m_rowExporter = exporter; }

    LoadContactsViewController &controller() { return m_controller; }
    /// In the order of the uids; missing ones are reported and left out.
    std::vector<int> rowsOf(const std::vector<std::string> &uids);
    /// Something was reported, or a question was not answered.
    bool hasFailed() const { return m_hasFailed || m_alertPanel.hasUnanswered(); }

private:
    const CommandContext &m_context;
    ConsoleAlertPanel m_alertPanel;
    RowExporter *m_rowExporter = nullptr;
    bool m_hasFailed = false;
    LoadContactsViewController m_controller;
};
