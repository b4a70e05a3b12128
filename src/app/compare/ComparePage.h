// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/compare/StickyGrid.h"
#include "contacts/book/ABPerson.h"

/// Contacts side by side, and what the merge of the repairs makes of them. What they all say is quiet.
class ComparePage : public StickyGrid
{
    Q_OBJECT

public:
    explicit ComparePage(QWidget *parent = nullptr);

    /// Two people or more.
    void showPeople(const QList<ABPersonPtr> &people);
};
