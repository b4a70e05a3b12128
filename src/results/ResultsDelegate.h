// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/AlertPanel.h"
#include "contacts/book/ABPerson.h"

/// What the results need from the program. Called on the controller's thread.
class ResultsDelegate
{
public:
    virtual ~ResultsDelegate() = default;

    virtual AlertPanel &alertPanel() = 0;
    /// Shows the person in a contacts application.
    virtual void selectInAddressBook(const ABPersonPtr &person) = 0;
    /// Opens the person for editing in a contacts application; need not wait for the edit.
    virtual void editInAddressBook(const ABPersonPtr &person) = 0;
    /// Returns to the start view. Returns when it is shown, while the controller still exists.
    virtual void reloadUI() = 0;
    /// The number of parts of the results' view, for the log; 0 without a view.
    virtual qsizetype subviewCount() const { return 0; }
};
