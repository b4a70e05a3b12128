// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "results/OutlineViewController.h"

#include <QWidget>

class ButtonBar;
class QButtonGroup;
class QLabel;
class QPushButton;
class QStackedWidget;
class QTreeView;
class QVBoxLayout;
class PreviewView;
class WrappedText;

/// The results of a scan: the tree, and the selected finding with its repairs and their preview. All actions are the
/// controller's.
class ResultsView : public QWidget
{
    Q_OBJECT

public:
    /// @p controller must outlive the view.
    explicit ResultsView(OutlineViewController &controller, QWidget *parent = nullptr);

    QTreeView *outlineView() const { return m_tree; }
    QPushButton *fixButton() const { return m_fixButton; }
    QPushButton *backButton() const { return m_backButton; }
    QPushButton *openContactButton() const { return m_openContactButton; }
    PreviewView *preview() const { return m_preview; }
    /// The panes for F6; null for hidden ones.
    QList<QWidget *> panes() const;

    /// Shows the tree with all groups open and the first finding selected.
    void refresh();

private:
    void setUpTree();
    QWidget *makePanel();
    QWidget *makeTips();
    QWidget *makeButtons();
    void setUpKeys();
    void followController();
    void showSelection();
    void showPanel();
    void showOptions();
    void showCount();

    OutlineViewController &m_controller;
    QTreeView *m_tree;
    QLabel *m_count;
    WrappedText *m_name;
    QLabel *m_picture;
    WrappedText *m_email;
    QLabel *m_gone;
    WrappedText *m_problem;
    QWidget *m_boxWithMatrix;
    QVBoxLayout *m_options;
    QButtonGroup *m_optionButtons;
    PreviewView *m_preview;
    QStackedWidget *m_side; // the panel, or tips when all groups are closed
    ButtonBar *m_buttonBar = nullptr;
    QPushButton *m_openContactButton;
    QPushButton *m_backButton;
    QPushButton *m_fixButton;
    std::optional<OptionGroup> m_shownGroup;
};
