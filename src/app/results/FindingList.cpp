// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/FindingList.h"

#include "app/look/Controls.h"
#include "app/results/FindingDelegate.h"
#include "app/results/FindingTree.h"
#include "app/results/ShownFindings.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>

FindingList::FindingList(ShownFindings &findings, QWidget *parent)
    : QWidget(parent), m_tree(new FindingTree(this)), m_filter(new QLineEdit(this)), m_count(new QLabel(this))
{
    setUpTree(findings);
    makeSearchField(*m_filter, tr("Filter the findings"));
    m_count->setAlignment(Qt::AlignRight);
    m_count->setForegroundRole(QPalette::PlaceholderText);
    m_count->setContentsMargins(16, 6, 16, 6);
    auto *above = new QHBoxLayout;
    above->setContentsMargins(12, 12, 12, 12);
    above->addWidget(m_filter);
    auto *pane = new QWidget;
    pane->setBackgroundRole(QPalette::Base);
    pane->setAutoFillBackground(true);
    auto *layout = innerLayout<QVBoxLayout>(pane);
    layout->addLayout(above);
    layout->addWidget(m_tree, 1);
    layout->addWidget(separator(Qt::Horizontal));
    layout->addWidget(m_count);
    auto *sides = innerLayout<QHBoxLayout>(this);
    sides->addWidget(pane, 1);
    sides->addWidget(separator(Qt::Vertical));
    setTabOrder(m_filter, m_tree);
}

void FindingList::setUpTree(ShownFindings &findings)
{
    m_tree->setAccessibleName(tr("Findings"));
    m_tree->setModel(&findings);
    m_tree->setItemDelegate(new FindingDelegate(m_tree));
    m_tree->setHeaderHidden(true);
    m_tree->setFrameShape(QFrame::NoFrame);
    m_tree->setSelectionMode(QAbstractItemView::SingleSelection);
    m_tree->setAnimated(false);
    m_tree->setExpandsOnDoubleClick(true);
}

void FindingList::setCount(const QString &text)
{
    m_count->setText(text);
}
