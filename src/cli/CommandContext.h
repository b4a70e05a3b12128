// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "cli/CommandLine.h"
#include "contacts/book/RestorePlan.h"
#include "contacts/model/RecordDifferences.h"

#include <optional>

/// What a command gets beside its options.
struct CommandContext
{
    Console &console;
    QString where; ///< the address book named by the user; empty: the default one

    /// Opens it as the shared address book. Null: refused, with the reason printed.
    std::shared_ptr<ABAddressBook> openAddressBook() const;
    /// The same for a command that changes it; refused if it is read-only. Makes the daily backup first; if that fails,
    /// prints the reason and continues.
    std::shared_ptr<ABAddressBook> openAddressBookForChange() const;
    /// The path of a file or folder named by the user. Null: refused, with the reason printed.
    std::optional<QString> path(const std::string &argument) const;
    /// Prints one line on standard error.
    void report(const QString &line) const;
    void reportMissing(const QString &uid) const; ///< that no contact has it
    ExitStatus refuse(const QString &line, ExitStatus status = ExitStatus::Refused) const
    {
        report(line);
        return status;
    }
};

/// Arguments, known to be valid UTF-8.
QStringList textsOf(const std::vector<std::string> &arguments);

/// In the order of the arguments. Empty, with the reasons reported, unless each of them names another contact.
QList<ABPersonPtr> peopleNamed(const QStringList &uids, const ABAddressBook &book, const CommandContext &context);

/// A text as UTF-8, with blanks in place of all characters that would start a new line or move the cursor, since names,
/// labels and notes may contain anything.
std::string onOneLine(QString text);

/// In words: 'suffix: "y" -> nothing'.
QString textOf(const RecordDifference &difference);

/// "1 added, 3 removed"; zeros are left out unless all are.
QString countsText(qint64 added, qint64 changed, qint64 removed);
/// Carries out the plan and prints the result or the error.
ExitStatus applyAndReport(ABAddressBook &book, const Result<RestorePlan> &plan, const CommandContext &context);
