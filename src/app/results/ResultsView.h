// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/results/FindingTree.h"
#include "results/OutlineViewController.h"

#include <QWidget>

class ButtonBar;
class FindingHead;
class FindingList;
class OptionBox;
class PlacesLabel;
class PreviewBox;
class PreviewView;
class QLineEdit;
class QPushButton;
class QStackedWidget;
class ShownFindings;
class StatePage;
class Strip;

/// The results of a scan: the tree, and the selected finding with its repairs and their preview. All actions are the
/// controller's.
class ResultsView : public QWidget
{
    Q_OBJECT

public:
    /// @p controller must outlive the view.
    explicit ResultsView(OutlineViewController &controller, QWidget *parent = nullptr);

    QTreeView *outlineView() const { return m_tree; }
    QLineEdit *filterField() const { return m_filter; }
    QPushButton *fixButton() const { return m_fixButton; }
    QPushButton *fixAllButton() const { return m_fixAllButton; }
    QPushButton *backButton() const { return m_backButton; }
    QPushButton *openContactButton() const { return m_openContactButton; }
    QPushButton *ignoreButton() const { return m_ignoreButton; }
    QPushButton *compareButton() const;
    QPushButton *compareTab() const;
    PreviewView *preview() const { return m_preview; }
    /// The panes for F6; null for hidden ones.
    QList<QWidget *> panes() const;

    /// Shows the tree with all groups open and the first finding selected.
    void refresh();
    /// Shows the tree as it was left.
    void resume();
    void fixAll();

Q_SIGNALS:
    void repaired(const QString &what); ///< a short message
    void ignoreRequested(const QList<PersonItemPtr> &findings);
    void comparisonRequested(const QList<ABPersonPtr> &people);

private:
    QWidget *makePanel();
    QWidget *makeButtons();
    void setUpActions();
    void followController();
    void showSelection();
    void showPanel();
    void showPlaces();
    void showTips();
    void showPreview();
    void showFixAll();
    void showIgnore();
    void showCount();
    void openGroups();
    void tellOfRepair(const FixOutcome &outcome, const PersonItemPtr &finding);

    OutlineViewController &m_controller;
    ShownFindings *m_shown;
    FindingList *m_list;
    FindingTree *m_tree;
    QLineEdit *m_filter;
    FindingHead *m_head;
    Strip *m_problem;
    PlacesLabel *m_places = nullptr;
    OptionBox *m_options;
    PreviewBox *m_previewBox;
    PreviewView *m_preview;
    QStackedWidget *m_side; // the panel, or what is shown when nothing is selected
    StatePage *m_tips;
    StatePage *m_noMatch;
    ButtonBar *m_buttonBar = nullptr;
    QPushButton *m_ignoreButton;
    QPushButton *m_openContactButton;
    QPushButton *m_backButton;
    QPushButton *m_fixAllButton;
    QPushButton *m_fixButton;
    QAction *m_fixAllAction = nullptr;
    QAction *m_ignoreAction = nullptr;
    QAction *m_compareAction = nullptr;
    bool m_isFixingAll = false;
};
