// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/AlertPanel.h"
#include "fix/Finding.h"

// The repairs of the shared address book, one function per condition. Each runs the option with the given title, saves
// immediately, and returns how to update the finding. Other titles change nothing; handlers with a single option ignore
// the title. A failed save is logged, reported in the outcome and not undone. Call on the thread that owns the tree.
// The alert panel is only asked before a person is deleted.

using FixHandler = FixOutcome (*)(const Finding &finding, const QString &option, AlertPanel &alertPanel);

/// The handler for findings of a condition.
FixHandler handlerFor(Condition condition);

FixOutcome processOnlyOneNameContacts(const Finding &finding, const QString &option, AlertPanel &alertPanel);
FixOutcome processBadSuffixContacts(const Finding &finding, const QString &option, AlertPanel &alertPanel);
FixOutcome processUnusualTitleContacts(const Finding &finding, const QString &option, AlertPanel &alertPanel);
FixOutcome processSpaceInFirstNameContacts(const Finding &finding, const QString &option, AlertPanel &alertPanel);
FixOutcome processEmptyNotesContacts(const Finding &finding, const QString &option, AlertPanel &alertPanel);
FixOutcome processEmptyNicknameContacts(const Finding &finding, const QString &option, AlertPanel &alertPanel);
FixOutcome processDuplicateEmailContacts(const Finding &finding, const QString &option, AlertPanel &alertPanel);
FixOutcome processDuplicatePhoneContacts(const Finding &finding, const QString &option, AlertPanel &alertPanel);
FixOutcome processDuplicateAddresslContacts(const Finding &finding, const QString &option, AlertPanel &alertPanel);
FixOutcome processInvalidCharContacts(const Finding &finding, const QString &option, AlertPanel &alertPanel);
FixOutcome processBlankNameContacts(const Finding &finding, const QString &option, AlertPanel &alertPanel);

/// For all people in the address book who now have the person's name key, whatever the scan found.
FixOutcome processDuplicateContact(const Finding &finding, const QString &option, AlertPanel &alertPanel);
/// For the people who shared the address according to the scan.
FixOutcome processShareEmailContacts(const Finding &finding, const QString &option, AlertPanel &alertPanel);
