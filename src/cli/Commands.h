// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "cli/CommandLine.h"
#include "contacts/book/RestorePlan.h"

#include <optional>

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
    ExitStatus refuse(const QString &line) const
    {
        report(line);
        return ExitStatus::Refused;
    }
};

/// Arguments, known to be valid UTF-8.
QStringList textsOf(const std::vector<std::string> &arguments);

/// In the order of the arguments. Empty, with the reasons reported, unless each of them names another contact.
QList<ABPersonPtr> peopleNamed(const QStringList &uids, const ABAddressBook &book, const CommandContext &context);

/// A text as UTF-8, with blanks in place of all characters that would start a new line or move the cursor, since names,
/// labels and notes may contain anything.
std::string onOneLine(QString text);

struct ImportOptions
{
    std::string format; // empty: by content
    bool replace = false;
    std::vector<std::string> files;
};
ExitStatus runImport(const ImportOptions &options, const CommandContext &context);

struct PeopleOptions
{
    std::string format = "jsonl";
    std::vector<std::string> uids; // empty: everybody
};
ExitStatus runPeople(const PeopleOptions &options, const CommandContext &context);

struct ScanOptions
{
    std::vector<std::string> titles; // empty: all of them
    bool json = false;
    bool exitCode = false;
    bool withoutIgnored = false;
};
ExitStatus runScan(const ScanOptions &options, const CommandContext &context);

struct LikelyOptions
{
    std::string grade = "likely"; ///< the weakest that is printed
    bool json = false;
};
ExitStatus runLikely(const LikelyOptions &options, const CommandContext &context);

struct IgnoreOptions
{
    std::string condition; ///< its title; empty: `different`
    bool different = false; ///< the contacts are different people
    std::vector<std::string> uids;
};
ExitStatus runIgnore(const IgnoreOptions &options, const CommandContext &context);

struct IgnoredOptions
{
    bool json = false;
    bool remove = false; ///< `ids`, instead of printing
    std::vector<std::string> ids;
};
ExitStatus runIgnored(const IgnoredOptions &options, const CommandContext &context);

struct TableOptions
{
    std::vector<std::string> uids; // empty: everybody
};
ExitStatus runTable(const TableOptions &options, const CommandContext &context);

struct EditOptions
{
    std::string uid;
    std::string label;
    std::string value;
};
ExitStatus runEdit(const EditOptions &options, const CommandContext &context);

struct ExportOptions
{
    std::string format;
    std::string scope = "all";
    std::vector<std::string> columns; // lists of labels; empty: the default columns
    std::vector<std::string> select; // lists of uids; empty: everybody
    std::string folder;
};
ExitStatus runExport(const ExportOptions &options, const CommandContext &context);

struct DeleteOptions
{
    std::vector<std::string> uids;
    bool yes = false; // delete without asking
};
ExitStatus runDelete(const DeleteOptions &options, const CommandContext &context);

struct FixOptions
{
    std::string group;
    std::string option;
    std::vector<std::string> uids;
    bool all = false; ///< instead of uids
    bool yes = false;
};
ExitStatus runFix(const FixOptions &options, const CommandContext &context);

struct MergeOptions
{
    std::vector<std::string> uids; ///< at least two
    bool keepAll = false; ///< the default
    bool asRepair = false;
};
ExitStatus runMerge(const MergeOptions &options, const CommandContext &context);

struct PreviewOptions
{
    std::string group;
    std::string option;
    std::string uid;
};
ExitStatus runPreview(const PreviewOptions &options, const CommandContext &context);

struct HistoryOptions
{
    int limit = 0; ///< how many are printed; 0: all
    bool json = false;
};
ExitStatus runHistory(const HistoryOptions &options, const CommandContext &context);

struct HistoryShowOptions
{
    std::string id;
    bool json = false;
};
ExitStatus runHistoryShow(const HistoryShowOptions &options, const CommandContext &context);

struct HistoryRestoreOptions
{
    std::vector<std::string> ids;
};
ExitStatus runHistoryRestore(const HistoryRestoreOptions &options, const CommandContext &context);

struct BackupOptions
{
    std::string file;
    bool replace = false; ///< an existing file
};
ExitStatus runBackup(const BackupOptions &options, const CommandContext &context);

struct RestoreOptions
{
    std::string file;
    std::vector<std::string> only; ///< uids; empty: everyone
    bool dryRun = false; ///< only print the counts
    bool salvage = false; ///< `file` is the new file
};
ExitStatus runRestore(const RestoreOptions &options, const CommandContext &context);
ExitStatus runVerify(const CommandContext &context);

/// "1 added, 3 removed"; zeros are left out unless all are.
QString countsText(qint64 added, qint64 changed, qint64 removed);
/// Carries out the plan and prints the result or the error.
ExitStatus applyAndReport(ABAddressBook &book, const Result<RestorePlan> &plan, const CommandContext &context);
