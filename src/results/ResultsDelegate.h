// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/AlertPanel.h"
#include "contacts/book/ABPerson.h"

/// What the results ask of the program around them. Called on the controller's thread.
class ResultsDelegate
{
public:
    virtual ~ResultsDelegate() = default;

    virtual AlertPanel &alertPanel() = 0;
    /// Shows the person in a contacts application.
    virtual void selectInAddressBook(const ABPersonPtr &person) = 0;
    /// Opens the person for editing in a contacts application; need not wait for the edit.
    virtual void editInAddressBook(const ABPersonPtr &person) = 0;
    /// Goes back to the start view. Returns when it is shown; the controller must still exist then.
    virtual void reloadUI() = 0;
    /// How many parts the results' view has, for the log; 0 where there is no view.
    virtual qsizetype subviewCount() const { return 0; }
};
