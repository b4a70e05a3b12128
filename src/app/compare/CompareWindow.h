// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/compare/StickyGrid.h"
#include "base/Job.h"
#include "contacts/book/ABAddressBook.h"
#include "fix/Comparison.h"

#include <QDialog>

class ElidedLabel;
class QCheckBox;
class QPushButton;
class Strip;

/// Contacts of the shared address book side by side, a row per value, with what a merge would make of them; the merge
/// runs in a job. Until the repair is asked for, the user chooses among the values.
class CompareWindow : public QDialog
{
    Q_OBJECT

public:
    /// Needs two people or more; they are compared as they are now.
    CompareWindow(const QList<ABPersonPtr> &people, QWidget *parent = nullptr);

    void keepEverything();
    void showRepair(bool isShown);
    void merge();
    void rememberDifferent();
    /// Stays open during a merge, whose end has to be told.
    void reject() override;

    QAbstractButton *includeBox(std::size_t contact) const { return m_heads.cells[contact]->button(); }
    QPushButton *keepButton() const { return m_keep; }
    QPushButton *repairButton() const { return m_repair; }
    QPushButton *differentButton() const { return m_different; }
    QPushButton *mergeButton() const { return m_merge; }
    QString summary() const;
    QString message() const;

Q_SIGNALS:
    void merged(const QStringList &uids); ///< those of the people who are one now
    void differentPeople(const QStringList &uids); ///< of those who are not left out
    void failed(const QString &reason);

private:
    struct ShownRow
    {
        std::size_t index; ///< in the comparison that is shown
        StickyGrid::Row widgets;
    };

    QWidget *makeHead();
    QWidget *makeFoot();
    void setUpHeads();
    void showRows();
    void addRow(std::size_t index);
    QAbstractButton *makeButton(std::size_t index, std::size_t contact);
    void showChoices();
    void showRow(const ShownRow &row);
    void showSummary();
    QList<ABPersonPtr> includedPeople() const;
    QString quietLine(const Comparison::Row &row, std::size_t contact, bool isTaken) const;
    QString resultText(const Comparison::Row &row) const;
    const Comparison &shown() const { return m_repaired ? *m_repaired : m_choices; }
    void finish(const Result<void> &done, const QStringList &uids);

    const QList<ABPersonPtr> m_people;
    Comparison m_choices;
    std::optional<Comparison> m_repaired; // with what the repair makes as the last contact; while that is shown
    PersonRecord m_result;
    StickyGrid *m_grid;
    StickyGrid::Row m_heads{};
    std::vector<ShownRow> m_rows;
    QPushButton *m_keep;
    QPushButton *m_repair; ///< checked while its result is shown
    QCheckBox *m_toNote;
    QPushButton *m_different;
    QPushButton *m_merge;
    QPushButton *m_cancel;
    ElidedLabel *m_summary;
    Strip *m_message;
    Job m_merger;
};
