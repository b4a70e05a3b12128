// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fix/AnalysePerson.h"
#include "fix/FixHandlers.h"
#include "fix/FixPreview.h"
#include "fix/MergeContacts.h"
#include "results/ConditionGroups.h"
#include "results/DetailPanel.h"
#include "results/FindingFilter.h"
#include "results/LeftBehind.h"
#include "results/ResultTree.h"
#include "results/ResultsDelegate.h"
#include "scan/ScanResult.h"
#include "table/fields/PersonDictionary.h"

#include <QSet>

/// The results of one scan: the tree of findings, the selected one, its chosen repair and its preview; runs repairs and
/// moves on. Draw it in a window and pass clicks to it. For one thread, which another one may move it to once it has
/// called setOutlineViewDataSouce().
///
/// Rows count from 0 over groups and the findings of expanded groups.
class OutlineViewController : public QObject
{
    Q_OBJECT

public:
    /// @p delegate must outlive the controller.
    explicit OutlineViewController(ResultsDelegate &delegate, QObject *parent = nullptr);
    ~OutlineViewController() override;

    /// Builds the tree: nothing selected, all groups expanded. What the scan found but is @p ignored only counts.
    void setOutlineViewDataSouce(const ScanResult &result, const ScanResult &ignored = {});
    /// A group with one child per person; null without people.
    static PersonItemPtr creatFatherNode(const QString &name, const std::vector<ABPersonPtr> &withChildArray);

    /// Replaces the findings that concern people with these uids by those in @p now, each at its place, and updates the
    /// display. For outside changes, and changes of what is ignored.
    void reexamine(const QStringList &uids, const ScanResult &now, const ScanResult &ignored = {});
    QStringList conditionTitles() const; ///< that this scan found, and @p now is to be a scan for
    QStringList uids() const; ///< of the people with findings; may repeat

    ResultTree &model() { return m_tree; }
    const QList<PersonItemPtr> &rootNodes() const { return m_tree.rootNodes(); }
    qsizetype findingCount() const { return m_tree.findingCount(); }
    qsizetype totalCount() const { return m_totalCount; } ///< the most so far: findings that are not left are done
    qsizetype ignoredCount() const { return m_ignoredCount; } ///< not counted above

    void setFilter(const QString &text); ///< shows, selects and repairs only findings with these words
    bool isFiltered() const { return !m_filter.isEmpty(); }
    bool isShown(const PersonItem &finding) const { return m_filter.shows(finding); }
    QList<PersonItemPtr> shownFindings(const PersonItemPtr &group) const; ///< in their order

    // For views; a null item is the top level.
    qsizetype numberOfChildrenOfItem(const PersonItemPtr &item) const;
    PersonItemPtr child(qsizetype index, const PersonItemPtr &ofItem) const;
    bool isItemExpandable(const PersonItemPtr &item) const;
    bool isGroupItem(const PersonItemPtr &item) const { return rootNodes().contains(item); }
    RowView viewForTableColumn(const PersonItemPtr &item) const { return m_tree.rowView(*item); }
    bool shouldSelectItem(const PersonItemPtr &item) const { return !item->isRootNode(); }

    const PersonItemPtr &selectedItem() const { return m_selected; }
    void selectItem(const PersonItemPtr &item); ///< like a click; ignores groups
    void selectRow(qsizetype row); ///< also a group; ignores missing rows
    qsizetype rowForItem(const PersonItemPtr &item) const { return rows().indexOf(item); } ///< -1: not visible
    PersonItemPtr itemAtRow(qsizetype row) const { return rows().value(row); }
    bool isItemExpanded(const PersonItemPtr &group) const { return !m_collapsed.contains(group.get()); }
    void setItemExpanded(const PersonItemPtr &group, bool expanded); ///< by the user
    void outlineViewSelectionDidChange();
    void outlineViewItemWillCollapse() { setSelected(nullptr); }
    void outlineViewItemDidCollapse();
    void outlineViewItemDidExpand() { }

    void updateUI();
    const DetailPanel &detailPanel() const { return m_panel; }
    bool showsTips() const { return m_showsTips; } ///< instead of the detail panel: every group is closed
    bool buttonsEnabled() const { return m_buttonsEnabled; } ///< "Open In Contacts" and "Fix"
    /// False also if another repair removed the person, or it is damaged.
    bool canFix() const { return m_buttonsEnabled && m_selected && m_selected->whyNotFixable().isNull(); }
    void openInContacts();
    void backClicked() { m_delegate.reloadUI(); }

    QString currentOption(OptionGroup group) const;
    bool chooseOption(OptionGroup group, const QString &title); ///< like a click; false if the group has no such option
    void matrixClicked(OptionGroup group) { creatScrollerViewWithTitle(currentOption(group)); }
    void removeAllMatrix() { m_panel.optionGroup.reset(); }
    void creatScrollerViewWithTitle(const QString &title); ///< shows what the option would do to the selected finding
    PreviewDocument preview() const; ///< read from the people when it is called; without fields when nothing is shown
    std::vector<LostValue> leftBehind() const; ///< by the repair whose preview is shown

    void FixFounction(); ///< repairs the selected finding with its group's chosen option, then selects the next one
    void fixClick() { FixFounction(); }
    /// What the history calls the chosen repair of these findings of one group; at least one.
    ChangeCausePtr causeOfRepair(const QList<PersonItemPtr> &findings) const;
    /// Repairs a finding of the tree with the chosen option; leaves the selection alone.
    FixOutcome repair(const PersonItemPtr &finding, const ChangeCausePtr &cause, AlertPanel &alertPanel);
    void moveOn(const PersonItemPtr &group); ///< selects what follows a repair in this group, which may be gone
    void clearSelection() { setSelected(nullptr); }

    // Only the repairs: they change the people and the tree, not the selection.
    void processDuplicateContact(const PersonItemPtr &item) { run(::processDuplicateContact, item); }
    void processOnlyOneNameContacts(const PersonItemPtr &item) { run(::processOnlyOneNameContacts, item); }
    void processBadSuffixContacts(const PersonItemPtr &item) { run(::processBadSuffixContacts, item); }
    void processUnusualTitleContacts(const PersonItemPtr &item) { run(::processUnusualTitleContacts, item); }
    void processSpaceInFirstNameContacts(const PersonItemPtr &item) { run(::processSpaceInFirstNameContacts, item); }
    void processEmptyNotesContacts(const PersonItemPtr &item) { run(::processEmptyNotesContacts, item); }
    void processDuplicateEmailContacts(const PersonItemPtr &item) { run(::processDuplicateEmailContacts, item); }
    void processDuplicatePhoneContacts(const PersonItemPtr &item) { run(::processDuplicatePhoneContacts, item); }
    void processDuplicateAddresslContacts(const PersonItemPtr &item) { run(::processDuplicateAddresslContacts, item); }
    void processEmptyNicknameContacts(const PersonItemPtr &item) { run(::processEmptyNicknameContacts, item); }
    void processShareEmailContacts(const PersonItemPtr &item) { run(::processShareEmailContacts, item); }
    void processInvalidCharContacts(const PersonItemPtr &item) { run(::processInvalidCharContacts, item); }
    void processBlankNameContacts(const PersonItemPtr &item) { run(::processBlankNameContacts, item); }
    static ABPersonPtr mergeContacts(const QList<ABPersonPtr> &people) { return ::mergeContacts(people); }
    static DisplayFields analysePerson(const ABPerson &person) { return ::analysePerson(person); }
    static PersonDictionary prasePerson(const ABPersonPtr &p) { return ::prasePerson(p, DictionaryForm::Merge); }

Q_SIGNALS:
    void selectionChanged(); ///< another item, or none
    void detailPanelChanged(); ///< also for the buttons and tips
    void previewChanged();
    void itemExpanded(const QModelIndex &group); ///< by the controller, not by the user
    void fixed(const FixOutcome &outcome, const PersonItemPtr &finding); ///< the selection has not moved on yet
    void filterChanged(); ///< the selection has not followed yet

private:
    void run(FixHandler handler, const PersonItemPtr &item);
    FixOutcome run(FixHandler handler, const PersonItemPtr &item, const ChangeCausePtr &cause, AlertPanel &alertPanel);
    QList<PersonItemPtr> rows() const;
    PersonItemPtr firstShown(const PersonItemPtr &group) const;
    void selectFirstShown();
    void setSelected(const PersonItemPtr &item);
    void showTips();

    ResultsDelegate &m_delegate;
    ResultTree m_tree{this};
    FindingFilter m_filter;
    std::vector<Condition> m_conditions; // that the scan found
    qsizetype m_totalCount = 0;
    qsizetype m_ignoredCount = 0;
    QSet<const PersonItem *> m_collapsed;
    PersonItemPtr m_selected;
    DetailPanel m_panel;
    bool m_showsTips = false;
    bool m_buttonsEnabled = false;
    std::array<std::size_t, kOptionGroups.size()> m_currentOptions{};
    QString m_previewTitle; // null: none
};
