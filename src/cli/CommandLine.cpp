// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CommandLine.h"

#include "cli/Commands.h"
#include "contacts/model/Utf8Text.h"
#include "contacts/stores/open/FilePath.h"
#include "contacts/stores/open/OpenStore.h"
#include "export/formats/ExportContact.h"
#include "results/ConditionGroups.h"

#include <CLI/CLI.hpp>

#include <QLoggingCategory>

#include <algorithm>
#include <functional>
#include <limits>
#include <mutex>

namespace {

/// What is left to do once the arguments are read: run the command that they named.
using ChosenCommand = std::function<ExitStatus(const CommandContext &)>;

/// A command and where its options are put, which live as long as the command.
template <typename Options>
std::pair<CLI::App *, Options &> add(CLI::App &app, ChosenCommand &chosen, const char *name, const char *description,
    ExitStatus (*run)(const Options &, const CommandContext &))
{
    CLI::App *command = app.add_subcommand(name, description)->group("Commands");
    const auto options = std::make_shared<Options>();
    command->callback([&chosen, options, run] {
        if (!chosen) // not its subcommand
            chosen = [options, run](const CommandContext &context) { return run(*options, context); };
    });
    return {command, *options};
}

void addImport(CLI::App &app, ChosenCommand &chosen)
{
    auto [command, options] = add(app, chosen, "import", "Add the records of vCard or JSON Lines files", runImport);
    command->add_option("--format", options.format, "The format of the files; recognised from the content if omitted")
        ->check(CLI::IsMember({"vcard", "jsonl"}));
    command->add_flag("--replace", options.replace, "Replace stored records with the same uid but different content");
    command->add_option("FILE", options.files, "Files to read; - is standard input")->required();
}

void addPeople(CLI::App &app, ChosenCommand &chosen)
{
    auto [command, options] = add(app, chosen, "people", "Print complete records", runPeople);
    command->add_option("--format", options.format, "How to print them")
        ->check(CLI::IsMember({"vcard", "jsonl"}))
        ->capture_default_str();
    command->add_option("UID", options.uids, "Only these records");
}

void addScan(CLI::App &app, ChosenCommand &chosen)
{
    auto [command, options] =
        add(app, chosen, "scan", "Find contacts that are malformed, incomplete or duplicated", runScan);
    command
        ->add_option("--condition", options.titles, "Look for this only; may be repeated and runs in the given order")
        ->type_name("TITLE");
    command->add_flag("--json", options.json, "Print one JSON object of uids instead of the tree");
    command->add_flag("--exit-code", options.exitCode, "Exit with status 1 if anything was found");
    command->add_flag("--without-ignored", options.withoutIgnored, "Leave out what the command ignore remembers");
    std::string titles = "\nTitles, in the order of a full scan:\n";
    for (const QString &title : conditionTitles())
        titles += "  " + title.toStdString() + "\n";
    command->footer(titles);
}

void addLikely(CLI::App &app, ChosenCommand &chosen)
{
    auto [command, options] =
        add(app, chosen, "likely", "Find contacts that are probably one person, however they are written", runLikely);
    command->add_option("--grade", options.grade, "The lowest grade to print")
        ->check(CLI::IsMember({"certain", "likely", "possible"}))
        ->capture_default_str();
    command->add_flag("--json", options.json, "Print one JSON object per group");
}

void addIgnore(CLI::App &app, ChosenCommand &chosen)
{
    auto [command, options] = add(app, chosen, "ignore",
        "Remember that a finding of these contacts is fine, or that they are different people", runIgnore);
    std::vector<std::string> titles;
    for (const QString &title : conditionTitles())
        titles.push_back(title.toStdString());
    CLI::Option *condition = command->add_option("--condition", options.condition, "The condition that found it")
                                 ->type_name("TITLE")
                                 ->check(CLI::IsMember(titles).description(""));
    command->add_flag("--different", options.different, "The contacts are different people")->excludes(condition);
    command->add_option("UID", options.uids, "The contacts")->required();
}

void addIgnored(CLI::App &app, ChosenCommand &chosen)
{
    auto [command, options] = add(app, chosen, "ignored", "Print what is ignored, each with an id", runIgnored);
    CLI::Option *json = command->add_flag("--json", options.json, "Print one JSON object per line");
    command->add_flag("--remove", options.remove, "Stop ignoring what has these ids")->excludes(json);
    command->add_option("ID", options.ids, "What to stop ignoring");
}

void addTable(CLI::App &app, ChosenCommand &chosen)
{
    auto [command, options] =
        add(app, chosen, "table", "Print people as rows of the contact table, one JSON object per line", runTable);
    command->add_option("UID", options.uids, "Only these people");
}

void addEdit(CLI::App &app, ChosenCommand &chosen)
{
    auto [command, options] = add(app, chosen, "edit", "Edit one cell of the contact table", runEdit);
    command->add_option("UID", options.uid, "The person to edit")->required();
    command->add_option("LABEL", options.label, "The column, such as \"Home City\"")->required();
    command->add_option("VALUE", options.value, "The new value; put -- before one that begins with a hyphen")
        ->required();
}

void addDelete(CLI::App &app, ChosenCommand &chosen)
{
    auto [command, options] = add(app, chosen, "delete", "Delete people from the address book", runDelete);
    command->add_option("UID", options.uids, "The people to delete")->required();
    command->add_flag("--yes", options.yes, "Do not ask");
}

std::string optionTable()
{
    std::string table = "\nGroups and their options:\n";
    for (const ConditionGroup &group : conditionGroups()) {
        table += "  " + std::string(group.name.data()) + "\n";
        for (const QLatin1StringView title : optionGroupInfo(group.optionGroup).titles)
            table += "      " + std::string(title.data()) + "\n";
    }
    return table;
}

void addGroupAndOption(CLI::App *command, std::string &group, std::string &option)
{
    command->add_option("--group", group, "The group of the findings, as scan prints it")
        ->type_name("NAME")
        ->required();
    command->add_option("--option", option, "The repair")->type_name("TITLE")->required();
}

void addFix(CLI::App &app, ChosenCommand &chosen)
{
    auto [command, options] =
        add(app, chosen, "fix", "Repair what a scan finds, and print what was changed, one line per finding", runFix);
    addGroupAndOption(command, options.group, options.option);
    command->add_option("UID", options.uids, "The contacts whose first finding is repaired");
    command->add_flag("--all", options.all, "Repair every finding of the group instead");
    command->add_flag("--yes", options.yes, "Answer the question before a deletion with Delete");
    command->footer(optionTable());
}

void addMerge(CLI::App &app, ChosenCommand &chosen)
{
    auto [command, options] =
        add(app, chosen, "merge", "Merge contacts into one that keeps the first one's uid", runMerge);
    command->add_option("UID", options.uids, "The contacts")->required();
    CLI::Option *keepAll = command->add_flag("--keep-all", options.keepAll,
        "Lose nothing (the default): where single values differ, the first stays and the others go into the note");
    command->add_flag("--as-repair", options.asRepair, "Keep what the repair \"Merge contacts\" keeps")
        ->excludes(keepAll);
}

void addPreview(CLI::App &app, ChosenCommand &chosen)
{
    auto [command, options] = add(
        app, chosen, "preview", "Print what a repair would do: the contact as it is and as it would be", runPreview);
    addGroupAndOption(command, options.group, options.option);
    command->add_option("UID", options.uid, "The contact")->required();
    command->footer(optionTable());
}

void addExport(CLI::App &app, ChosenCommand &chosen)
{
    std::vector<std::string> names;
    for (const ExportContact::Format &format : ExportContact::formats())
        names.push_back(format.name.toStdString());
    auto [command, options] =
        add(app, chosen, "export", "Write people to files, and print the files' paths", runExport);
    command->add_option("--format", options.format, "What to write")->required()->check(CLI::IsMember(names));
    command->add_option("--scope", options.scope, "The fields to write: those of the table's columns, or all")
        ->check(CLI::IsMember({"table", "all"}))
        ->capture_default_str();
    command->add_option("--columns", options.columns, "The table's columns, from the left, instead of its default ones")
        ->type_name("LABEL,LABEL...");
    command->add_option("--select", options.select, "Only these people, the last one first; may be repeated")
        ->type_name("UID,UID...");
    command->add_option("FOLDER", options.folder, "An existing folder to write into")->required();
}

void addHistory(CLI::App &app, ChosenCommand &chosen)
{
    auto [command, options] = add(app, chosen, "history", "Print the saved changes, newest first", runHistory);
    command->require_subcommand(0, 1);
    command->add_option("--limit", options.limit, "At most this many")
        ->check(CLI::Range(1, std::numeric_limits<int>::max()));
    command->add_flag("--json", options.json, "Print one JSON object per line");
    auto [show, showOptions] =
        add(*command, chosen, "show", "Print the people affected by a change, before and after", runHistoryShow);
    show->add_option("ID", showOptions.id, "The change's id, as history prints it")->required();
    show->add_flag("--json", showOptions.json, "Print one JSON object per person");
    auto [restore, restoreOptions] = add(*command, chosen, "restore",
        "Undo these changes, all or none; refused if one of the contacts has since changed", runHistoryRestore);
    restore->add_option("ID", restoreOptions.ids, "The changes' ids, in any order")->required();
}

void addBackup(CLI::App &app, ChosenCommand &chosen)
{
    auto [command, options] = add(app, chosen, "backup",
        "Write the address book to a new address book file, and check it by reading it back", runBackup);
    command->add_option("FILE", options.file, "The file to write")->required();
    command->add_flag("--replace", options.replace, "Replace an existing file");
}

void addRestore(CLI::App &app, ChosenCommand &chosen)
{
    auto [command, options] =
        add(app, chosen, "restore", "Make the address book hold exactly what a backup holds", runRestore);
    command->add_option("FILE", options.file, "The backup; with --salvage, the new file to write")->required();
    CLI::Option *dryRun = command->add_flag("--dry-run", options.dryRun, "Only count what would change");
    CLI::Option *only =
        command->add_option("--only", options.only, "Restore only this person; may be repeated")->type_name("UID");
    command
        ->add_flag("--salvage", options.salvage,
            "Write what can still be read of a damaged address book to the new file FILE instead")
        ->excludes(dryRun)
        ->excludes(only);
}

void addVerify(CLI::App &app, ChosenCommand &chosen)
{
    app.add_subcommand(
           "verify", "Check every person and picture in an address book file; exit with status 1 if any is damaged")
        ->group("Commands")
        ->callback([&chosen] { chosen = runVerify; });
}

/// Sends diagnostic lines to the console's error stream while it lives. Where they are not wanted, only that a log was
/// put aside.
class Diagnostics
{
public:
    Diagnostics(Console &console, bool wanted)
    {
        s_out = &console.err;
        QLoggingCategory::setFilterRules(wanted ? QStringLiteral("peoplenook.*.debug=true\n*.trace.debug=false")
                                                : QStringLiteral("peoplenook.*=false\npeoplenook.store.critical=true"));
        m_previous = qInstallMessageHandler(write);
    }
    ~Diagnostics()
    {
        qInstallMessageHandler(m_previous);
        s_out = nullptr;
    }
    Diagnostics(const Diagnostics &) = delete;
    Diagnostics &operator=(const Diagnostics &) = delete;

private:
    static void write(QtMsgType type, const QMessageLogContext &context, const QString &line)
    {
        const std::scoped_lock lock(s_mutex); // jobs write lines, too
        if (s_out && type == QtCriticalMsg)
            *s_out << line.toStdString() << '\n';
        else if (s_out)
            *s_out << context.category << ": " << line.trimmed().toStdString() << '\n';
    }

    static inline std::mutex s_mutex;
    static inline std::ostream *s_out = nullptr; // a message handler is told nothing of its owner
    QtMessageHandler m_previous;
};

/// What is wrong with the arguments whatever they mean; empty if nothing is.
QString objectionTo(const std::vector<std::string> &arguments)
{
    // Uids, texts and paths are carried as texts, where other bytes would turn into those of something else.
    if (const auto other = std::ranges::find_if_not(arguments, isText); other != arguments.end())
        return textOfUtf8(*other) % QStringLiteral(": this argument is not UTF-8");
    // CLI11 would take the next argument for the value.
    const auto lacksValue = [](const std::string &argument) {
        return argument.starts_with("--") && argument.find('=') == argument.size() - 1;
    };
    const auto end = std::ranges::find(arguments, "--");
    const auto found = std::find_if(arguments.begin(), end, lacksValue);
    return found == end ? QString() : QString(textOfUtf8(*found) % QStringLiteral(": the value is missing"));
}

/// Takes every argument as it is. Of itself CLI11 splits "[a,b]" where an option or a list of arguments may hold more
/// than one, and gives an option all arguments that follow it.
void takeLiterally(CLI::App &app)
{
    constexpr int kAnyNumber = CLI::detail::expected_max_vector_size;
    for (CLI::Option *option : app.get_options()) {
        if (!option->get_allow_extra_args())
            continue;
        option->allow_extra_args(false)->take_all();
        if (option->get_positional()) // takes arguments until it has as many as it expects, but does not insist on them
            option->expected(kAnyNumber, kAnyNumber);
        else
            option->expected(1);
    }
    for (CLI::App *command : app.get_subcommands(nullptr))
        takeLiterally(*command);
}

/// Reports it in one line, unless it is what prints the help or the version.
ExitStatus end(const CLI::ParseError &error, const CLI::App &app, Console &console)
{
    if (error.get_exit_code() == 0) {
        app.exit(error, console.out, console.err);
        return ExitStatus::Done;
    }
    // CLI11 would say that something is missing, not that this was given instead.
    const std::vector<std::string> unknown = app.remaining();
    if (error.get_name() != "RequiredError" || (unknown.empty() && !app.get_subcommands().empty()))
        console.err << onOneLine(textOfUtf8(error.what())) << '\n';
    else if (unknown.empty())
        console.err << "a command is missing; see --help\n";
    else
        console.err << onOneLine(textOfUtf8(unknown.front()))
                    << (app.get_subcommands().empty() ? ": is not a command" : ": is not expected here")
                    << "; see --help\n";
    return ExitStatus::Usage;
}

void addEverything(CLI::App &app, std::string &where, bool &verbose, ChosenCommand &chosen)
{
    app.set_version_flag("--version", "peoplenook-cli " PEOPLENOOK_VERSION);
    app.require_subcommand(1);
    app.fallthrough();
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.add_option("--address-book", where,
           "A file (created if missing), or eds: or eds:UID for an address book of the desktop. Without it: the one "
           "that the desktop application opens")
        ->type_name("WHERE")
        ->check([](const std::string &name) { return std::string(name.empty() ? "is empty" : ""); });
    app.add_flag("--verbose", verbose, "Show diagnostic lines on standard error");
    for (const auto addCommand : {addImport, addPeople, addScan, addIgnore, addIgnored, addLikely, addTable, addEdit,
             addDelete, addFix, addMerge, addPreview, addExport, addHistory, addBackup, addRestore, addVerify})
        addCommand(app, chosen);
    takeLiterally(app);
}

ExitStatus parseAndRun(const std::vector<std::string> &arguments, Console &console)
{
    if (const QString objection = objectionTo(arguments); !objection.isEmpty()) {
        console.err << onOneLine(objection) << '\n';
        return ExitStatus::Usage;
    }
    CLI::App app{"Finds and repairs malformed, incomplete and duplicated contacts.", "peoplenook-cli"};
    std::string named;
    bool verbose = false;
    ChosenCommand chosen;
    addEverything(app, named, verbose, chosen);
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::ParseError &error) {
        return end(error, app, console);
    }
    const Diagnostics diagnostics(console, verbose);
    const auto where = checkedWhere(textOfUtf8(named));
    if (!where) {
        console.err << onOneLine(where.error().text) << '\n';
        return ExitStatus::Refused;
    }
    return chosen({console, *where});
}

} // namespace

ExitStatus runCommandLine(const std::vector<std::string> &arguments, Console &console)
{
    const ExitStatus status = parseAndRun(arguments, console);
    if (console.out.flush())
        return status;
    console.err << "standard output: writing failed\n";
    return ExitStatus::Refused;
}
