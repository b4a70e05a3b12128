// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/Commands.h"
#include "cli/ConsoleAlertPanel.h"
#include "results/OutlineViewController.h"

#include <QHash>

/// The results of a scan for one condition, driven from the command line: the application's own controller without a
/// window. There is no contacts application to open people in.
class FindingsOfCondition : public ResultsDelegate
{
public:
    /// @p group and @p option as the user wrote them; wrong ones are reported, and nothing is there then.
    static const ConditionGroup *checkedGroup(
        const std::string &group, const std::string &option, const CommandContext &context);

    /// Scans the shared address book.
    FindingsOfCondition(
        const ConditionGroup &group, const std::string &option, Console &console, bool answeredInAdvance);

    OutlineViewController &controller() { return m_controller; }
    /// All findings, in the order of the tree.
    QList<PersonItemPtr> nodes() const;
    /// The first finding of the person, as the scan left it; null, and reported, when there is none.
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
    QHash<QString, PersonItemPtr> m_firstNodes; // by uid; made when first asked for
};
