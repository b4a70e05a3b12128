// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class FindingTree;
class QLabel;
class QLineEdit;
class ShownFindings;

/// The tree of findings with its filter above and how many are done below.
class FindingList : public QWidget
{
    Q_OBJECT

public:
    /// @p findings must outlive this.
    explicit FindingList(ShownFindings &findings, QWidget *parent = nullptr);

    FindingTree *tree() const { return m_tree; }
    QLineEdit *filterField() const { return m_filter; }
    void setCount(const QString &text);

private:
    void setUpTree(ShownFindings &findings);

    FindingTree *m_tree;
    QLineEdit *m_filter;
    QLabel *m_count;
};
