// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/AlertPanel.h"
#include "fix/Finding.h"

// The repairs of the shared address book, one function a condition. Each runs the option with the given title, saves at
// once, and says what is to become of the finding. An option that is not the handler's own changes nothing; handlers of
// a single option do not look at it. A failed save is logged, reported in the outcome and not undone.
// On the thread that owns the tree. The alert panel is asked before a person is deleted, and only then.

using FixHandler = FixOutcome (*)(const Finding &finding, const QString &option, AlertPanel &alertPanel);

/// Of the findings of a condition.
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

/// Works on everybody in the address book who has the person's name key at that moment, whatever the scan found.
FixOutcome processDuplicateContact(const Finding &finding, const QString &option, AlertPanel &alertPanel);
/// Works on the people whom the scan found to share the address.
FixOutcome processShareEmailContacts(const Finding &finding, const QString &option, AlertPanel &alertPanel);
