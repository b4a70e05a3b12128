// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Job.h"
#include "fix/IgnoredFindings.h"
#include "likeness/LikelyDuplicates.h"

#include <QSet>
#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;
class QStackedWidget;
class QTreeWidget;
class QTreeWidgetItem;
class StatePage;
class WrappedText;

/// The contacts of the shared address book that are probably one person, in groups by grade, with what speaks for it.
/// They are looked for in a job that can be cancelled.
class LikelyWindow : public QWidget
{
    Q_OBJECT

public:
    /// @p among only groups with one of these uids; none: all.
    explicit LikelyWindow(QSet<QString> among = {}, QWidget *parent = nullptr);

    /// Takes out the groups of which no two are left in the address book, or that are of these different people.
    void leaveOut(const QStringList &different);

    QTreeWidget *groups() const { return m_groups; }
    QPushButton *compareButton() const { return m_compare; }
    QPushButton *differentButton() const { return m_different; }
    QString message() const;

Q_SIGNALS:
    void comparisonRequested(const QList<ABPersonPtr> &people);
    void differentPeople(const QStringList &uids);
    void ended(); ///< the groups are shown, or there are none

private:
    struct Found
    {
        PeopleSnapshot people;
        LikelyDuplicates duplicates;
        QString error; ///< null: none
    };

    QWidget *makeHeader();
    QWidget *makeProgress();
    QWidget *makeFoot();
    void setUpGroups();
    void search();
    void showFound(const Found &found);
    void addGroup(const LikelyGroup &group, const PeopleSnapshot &people);
    void showMembers(QTreeWidgetItem *item);
    void showSelection();
    void rememberDifferent();
    void removeGroup(QTreeWidgetItem *group);
    void showCounts();
    QTreeWidgetItem *selectedGroup() const;
    QList<ABPersonPtr> peopleOf(const QTreeWidgetItem *group) const;

    const QSet<QString> m_among;
    QStackedWidget *m_pages;
    QLabel *m_sentence; // about what is shown
    QProgressBar *m_progress;
    StatePage *m_empty;
    QTreeWidget *m_groups;
    WrappedText *m_message;
    QPushButton *m_different;
    QPushButton *m_compare;
    QHash<const QTreeWidgetItem *, QList<ABPersonPtr>> m_people; // of each group
    Job m_job;
};
