// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/CommandContext.h"
#include "cli/ConsoleAlertPanel.h"
#include "results/OutlineViewController.h"

#include <QHash>

/// The results of a scan for one condition, driven from the command line through the application's controller. It
/// cannot open contacts in another application.
class FindingsOfCondition : public ResultsDelegate
{
public:
    /// @p group and @p option as typed by the user; null, and reported, if they are wrong.
    static const ConditionGroup *checkedGroup(
        const std::string &group, const std::string &option, const CommandContext &context);

    FindingsOfCondition(
        const ConditionGroup &group, const std::string &option, Console &console, bool answeredInAdvance);

    OutlineViewController &controller() { return m_controller; }
    /// All findings, in tree order.
    QList<PersonItemPtr> nodes() const;
    /// The person's first finding, as scanned; null, and reported, if there is none.
    PersonItemPtr firstOf(const QString &uid, const CommandContext &context);
    bool hasUnansweredQuestion() const { return m_alertPanel.hasUnanswered(); }

    AlertPanel &alertPanel() override { return m_alertPanel; }
    void selectInAddressBook(const ABPersonPtr &) override { }
    void editInAddressBook(const ABPersonPtr &) override { }
    void reloadUI() override { }

private:
    const ConditionGroup &m_group;
    ConsoleAlertPanel m_alertPanel;
    OutlineViewController m_controller;
    QHash<QString, PersonItemPtr> m_firstNodes; // by uid; made on first use
};
