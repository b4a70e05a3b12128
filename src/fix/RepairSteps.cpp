// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/RepairSteps.h"

#include "contacts/book/ABAddressBook.h"

bool RepairSteps::note(bool done, const Error &failure, Error *error)
{
    if (!done && !m_outcome.error)
        m_outcome.error = failure;
    if (!done && error)
        *error = failure;
    return done;
}

bool RepairSteps::addRecord(const ABPersonPtr &person, Error *error)
{
    const auto book = ABAddressBook::sharedAddressBook();
    Error failure = noAddressBook();
    if (person->isRemoved()) // a removal that is still to be saved must not be taken back by a repair either
        failure = {ErrorKind::NotFound, person->uniqueId() % QStringLiteral(": is no longer in the address book")};
    return note(book && !person->isRemoved() && book->addRecord(person, &failure), failure, error);
}

bool RepairSteps::removeRecord(const ABPersonPtr &person, Error *error)
{
    const auto book = ABAddressBook::sharedAddressBook();
    Error failure = noAddressBook();
    const bool done = book && book->removeRecord(person, &failure);
    if (done)
        m_outcome.removed.push_back(person);
    else if (error)
        *error = failure;
    return done;
}

bool RepairSteps::save(Error *error)
{
    if (m_outcome.error && !m_outcome.error->uids.isEmpty()) // the repair was taken back
        return note(false, *m_outcome.error, error);
    const auto book = ABAddressBook::sharedAddressBook();
    Error failure = noAddressBook();
    const bool done = book && book->save(&failure, m_cause);
    // Everything pending was written, what an earlier save could not write too; only a conflict was decided for good.
    if (done && m_outcome.error && m_outcome.error->kind != ErrorKind::Conflict)
        m_outcome.error.reset();
    return note(done, failure, error);
}

void DeletionLine::log() const
{
    if (text)
        qCDebug(category, "%s", text);
}

FixOutcome deleteContact(const Finding &finding, AlertPanel &alertPanel, const DeletionLines &lines)
{
    FixOutcome outcome;
    const auto answer =
        alertPanel.runAlertPanel(QStringLiteral("Are you sure you want to delete the selected person ?"),
            QStringLiteral("This person will also delete from Contacts. "), QStringLiteral("Delete"),
            QStringLiteral("Cancel"));
    if (answer != AlertPanel::Answer::Default) {
        outcome.cancelled = true;
        return outcome;
    }
    outcome.removesNode = true;
    outcome.sweptUids = {finding.person->uniqueId()};
    outcome.lineOfSweptNode = lines.sweptNode;
    RepairSteps steps(outcome, finding);
    Error error;
    if (steps.removeRecord(finding.person, &error)) {
        lines.removed.log();
        if (steps.save())
            lines.saved.log();
    } else {
        outcome.error = error;
        if (lines.notRemovedSaysWhy)
            qCDebug(lines.notRemoved.category, "%s%s", lines.notRemoved.text, qUtf8Printable(error.description()));
        else
            lines.notRemoved.log();
    }
    return outcome;
}
