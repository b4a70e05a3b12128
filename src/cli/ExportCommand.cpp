// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"
#include "cli/ContactTable.h"
#include "contacts/model/Utf8Text.h"
#include "export/formats/ExportContact.h"

#include <QFile>

namespace {

/// Answers at once with what the command line named.
class AnsweredPanel : public ExportPanel
{
public:
    explicit AnsweredPanel(ExportChoice choice) : m_choice(std::move(choice)) { }
    void beginSheet(std::function<void(const std::optional<ExportChoice> &)> done) override { done(m_choice); }

private:
    ExportChoice m_choice;
};

/// Nothing, and a line on standard error, when a label is no column's.
std::optional<std::vector<Field>> columnsNamed(const std::vector<std::string> &lists, const CommandContext &context)
{
    std::vector<Field> columns;
    for (const std::string &list : lists) {
        for (const QString &label : textOfUtf8(list).split(u',')) {
            const auto field = fieldLabelled(label);
            if (!field) {
                context.report(
                    QStringLiteral("--columns: ") % label % QStringLiteral(": the contact table has no such column"));
                return std::nullopt;
            }
            if (std::ranges::find(columns, *field) == columns.end())
                columns.push_back(*field);
        }
    }
    return columns;
}

/// Nothing, and a line on standard error, when a list is a uid too: a card with the uid "a,b" that somebody imports
/// must not take the place of the contacts a and b.
std::optional<std::vector<std::string>> uidsNamed(
    const std::vector<std::string> &lists, const ABAddressBook &book, const CommandContext &context)
{
    const auto isUid = [&book](const QString &text) { return book.personWithUniqueId(text) != nullptr; };
    std::vector<std::string> uids;
    for (const std::string &list : lists) {
        const QString whole = textOfUtf8(list);
        const QStringList parts = whole.split(u',', Qt::SkipEmptyParts);
        const bool isOne = isUid(whole);
        const auto isOther = [&](const QString &part) { return part != whole && isUid(part); };
        if (isOne && std::ranges::any_of(parts, isOther)) {
            context.report(QStringLiteral("--select: ") % whole
                % QStringLiteral(": is the uid of one contact, and a list of others"));
            return std::nullopt;
        }
        for (const QString &uid : isOne || parts.isEmpty() ? QStringList(whole) : parts)
            uids.push_back(uid.toStdString());
    }
    return uids;
}

ExportChoice choiceOf(const ExportOptions &options, const QString &folder)
{
    const QString name = QString::fromStdString(options.format);
    const auto format = std::ranges::find(ExportContact::formats(), name, &ExportContact::Format::name);
    const int tag = options.scope == "table" ? ExportContact::kTableFieldsTag : ExportContact::kAllFieldsTag;
    return {folder, format->title, tag};
}

} // namespace

ExitStatus runExport(const ExportOptions &options, const CommandContext &context)
{
    if (options.folder.empty()) // with a file's name behind it, it would be the root
        return context.refuse(QStringLiteral("FOLDER: is empty"), ExitStatus::Usage);
    const auto columns = columnsNamed(options.columns, context);
    if (!columns)
        return ExitStatus::Usage;
    const auto folder = context.path(options.folder);
    const auto book = folder ? context.openAddressBook() : nullptr;
    const auto uids = book ? uidsNamed(options.select, *book, context) : std::nullopt;
    if (!uids)
        return ExitStatus::Refused;
    ContactTable table(book, context, false);
    if (!columns->empty())
        table.controller().getTableView()->setColumns(*columns);
    AnsweredPanel panel(choiceOf(options, *folder));
    ExportContact exporter(panel);
    table.setRowExporter(&exporter);
    bool hasFailed = false;
    const auto print = [&context, &hasFailed](const ExportOutcome &outcome) {
        for (const QString &path : outcome.report.paths)
            context.console.out << QFile::encodeName(path).constData() << '\n';
        if (outcome.report.error)
            context.report(outcome.report.error->text);
        const QString first = outcome.report.paths.value(0) % QStringLiteral(": ");
        if (!outcome.report.repairs.isEmpty())
            context.report(first % outcome.report.repairs.description());
        if (!outcome.report.remark.isEmpty())
            context.report(first % outcome.report.remark);
        hasFailed = outcome.report.error.has_value() || !outcome.report.repairs.isEmpty();
    };
    // The only other thread; this one waits for it.
    QObject::connect(&exporter, &ExportContact::exportFinished, &exporter, print, Qt::DirectConnection);
    if (uids->empty())
        table.controller().exportEverybody();
    else if (const std::vector<int> rows = table.rowsOf(*uids); !rows.empty())
        table.controller().exportItem(rows);
    exporter.waitForFinished();
    return hasFailed || table.hasFailed() ? ExitStatus::Refused : ExitStatus::Done;
}
