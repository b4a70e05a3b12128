// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "cli/CommandLine.h"
#include "contacts/book/RestorePlan.h"

#include <optional>

/// What every command is given.
struct CommandContext
{
    Console &console;
    QString where; ///< the address book that the user named; empty: the default one

    /// Opens it and makes it the shared one. Null: refused, and the reason is printed.
    std::shared_ptr<ABAddressBook> openAddressBook() const;
    /// The same for a command that is going to change it: refused where it is read-only. First the backup of the day is
    /// made; where that fails, the reason is printed and the command goes on.
    std::shared_ptr<ABAddressBook> openAddressBookForChange() const;
    /// The path of a file or folder that the user named. Null: refused, and the reason is printed.
    std::optional<QString> path(const std::string &argument) const;
    /// One line on standard error.
    void report(const QString &line) const;
    ExitStatus refuse(const QString &line) const
    {
        report(line);
        return ExitStatus::Refused;
    }
};

/// Arguments as they were given; their bytes are known to be UTF-8.
QStringList textsOf(const std::vector<std::string> &arguments);

/// A text as UTF-8 with blanks for all characters that would begin another line or move the cursor: names, labels and
/// notes may hold anything.
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
};
ExitStatus runScan(const ScanOptions &options, const CommandContext &context);

struct LikelyOptions
{
    std::string grade = "likely"; ///< the weakest that is printed
    bool json = false;
};
ExitStatus runLikely(const LikelyOptions &options, const CommandContext &context);

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
    std::vector<std::string> columns; // lists of labels; empty: those of a fresh contact table
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
    bool keepAll = false; ///< which is what it does anyway
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
    int limit = 0; ///< how many of the newest are printed; 0: all
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
    bool replace = false; ///< a file of that name
};
ExitStatus runBackup(const BackupOptions &options, const CommandContext &context);

struct RestoreOptions
{
    std::string file;
    std::vector<std::string> only; ///< uids; none: everybody
    bool dryRun = false; ///< only count
    bool salvage = false; ///< `file` is what to write then
};
ExitStatus runRestore(const RestoreOptions &options, const CommandContext &context);
ExitStatus runVerify(const CommandContext &context);

/// "1 added, 3 removed"; what is 0 is left out unless everything is.
QString countsText(qint64 added, qint64 changed, qint64 removed);
/// Carries the plan out and prints what it did, or why it could not be made or carried out.
ExitStatus applyAndReport(ABAddressBook &book, const Result<RestorePlan> &plan, const CommandContext &context);
