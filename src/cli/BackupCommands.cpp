// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"
#include "contacts/stores/open/Backups.h"
#include "contacts/stores/open/OpenStore.h"
#include "contacts/stores/open/Rescue.h"

#include <QFileInfo>

#include <optional>

namespace {

/// Refuses the desktop's books.
std::optional<QString> fileFor(const char *verb, const CommandContext &context)
{
    const QString file = fileOfBook(context.where);
    if (!file.isEmpty())
        return file;
    context.report(QStringLiteral("only an address book that is a file can be ") % QLatin1StringView(verb));
    return std::nullopt;
}

ExitStatus salvage(const QString &newFile, const CommandContext &context)
{
    const auto file = fileFor("salvaged", context);
    if (!file)
        return ExitStatus::Refused;
    const auto report = Rescue::salvage(*file, newFile);
    if (!report)
        return context.refuse(report.error().text);
    context.console.out << newFile.toStdString() << ": " << report->people.size() << " contacts, " << report->incomplete
                        << " of them incomplete or not as they were saved; " << (report->isLostExact ? "" : "at least ")
                        << report->lost << " could not be read\n";
    return ExitStatus::Done;
}

} // namespace

ExitStatus runBackup(const BackupOptions &options, const CommandContext &context)
{
    const auto file = context.path(options.file);
    const auto book = file ? context.openAddressBook() : nullptr;
    if (!book)
        return ExitStatus::Refused;
    const auto people = backUp(*book, *file, options.replace);
    if (!people)
        return context.refuse(people.error().text);
    context.console.out << options.file << ": " << *people << " contacts\n";
    return ExitStatus::Done;
}

ExitStatus runRestore(const RestoreOptions &options, const CommandContext &context)
{
    const auto file = context.path(options.file);
    if (!file)
        return ExitStatus::Refused;
    if (options.salvage)
        return salvage(*file, context);
    const auto book = options.dryRun ? context.openAddressBook() : context.openAddressBookForChange();
    if (!book)
        return ExitStatus::Refused;
    const QStringList only = textsOf(options.only);
    const auto plan = only.isEmpty() ? planRestoreOfBackup(*book, *file) : planRestoreOfPeople(*book, *file, only);
    if (!options.dryRun || !plan)
        return applyAndReport(*book, plan, context);
    context.console.out << "Would restore: " << countsText(plan->added, plan->changed, plan->removed).toStdString()
                        << ".\n";
    return ExitStatus::Done;
}

ExitStatus runVerify(const CommandContext &context)
{
    const auto file = fileFor("verified", context);
    if (!file)
        return ExitStatus::Refused;
    if (!QFileInfo::exists(*file)) // or it would be made
        return context.refuse(*file % QStringLiteral(": does not exist"));
    const auto verification = verify(*file);
    if (!verification)
        return context.refuse(verification.error().text % Rescue::hintFor(*file, verification.error()));
    for (const auto &[uid, fault, backup] : verification->people) {
        const QString where = backup.isEmpty() ? QStringLiteral("no daily backup has it undamaged")
                                               : QString(QStringLiteral("undamaged in ") % backup);
        context.console.out << onOneLine(fault % QStringLiteral("; ") % where) << '\n';
    }
    if (!verification->file)
        return context.refuse(verification->file.error().text % Rescue::hintFor(*file, verification->file.error()));
    if (!verification->people.empty())
        return ExitStatus::Refused;
    context.console.out << verification->count << " contacts, none of them damaged";
    if (verification->unchecked > 0)
        context.console.out << "; " << verification->unchecked << " without a digest, so not checked";
    context.console.out << ".\n";
    return ExitStatus::Done;
}
