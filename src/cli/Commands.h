// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/CommandContext.h"

// The commands with their options, whose arguments the command line has checked.

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
