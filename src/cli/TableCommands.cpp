// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"
#include "cli/ContactTable.h"
#include "contacts/model/Utf8Text.h"

#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;

namespace {

std::string toJson(const PersonDictionary &row)
{
    Json json = {{"Person", row.person()->uniqueId().toStdString()}};
    for (const auto &entry : row.entries())
        json[fieldInfo(entry.field()).label.toStdString()] = row.text(entry).toStdString();
    return json.dump();
}

ExitStatus statusOf(const ContactTable &table)
{
    return table.hasFailed() ? ExitStatus::Refused : ExitStatus::Done;
}

} // namespace

ExitStatus runTable(const TableOptions &options, const CommandContext &context)
{
    const auto book = context.openAddressBook();
    if (!book)
        return ExitStatus::Refused;
    ContactTable table(book, context, false);
    const PersonRows &rows = table.controller().getTableViewDataArray();
    if (options.uids.empty()) {
        for (const PersonRow &row : rows)
            context.console.out << toJson(*row) << '\n';
        return ExitStatus::Done;
    }
    std::vector<int> wanted = table.rowsOf(options.uids);
    std::ranges::sort(wanted);
    for (const int row : wanted)
        context.console.out << toJson(*rows[static_cast<std::size_t>(row)]) << '\n';
    return statusOf(table);
}

ExitStatus runEdit(const EditOptions &options, const CommandContext &context)
{
    const auto book = context.openAddressBookForChange();
    if (!book)
        return ExitStatus::Refused;
    const QString label = textOfUtf8(options.label);
    const auto field = fieldLabelled(label);
    if (!field)
        return context.refuse(label % QStringLiteral(": the contact table has no such column"));
    ContactTable table(book, context, false);
    const std::vector<int> rows = table.rowsOf({options.uid});
    if (rows.empty())
        return ExitStatus::Refused;
    const auto edited = table.controller().editCell(textOfUtf8(options.value), *field, rows.front());
    if (!edited && !table.hasFailed()) // refused before anything was committed
        context.report(edited.error().text);
    return edited ? ExitStatus::Done : ExitStatus::Refused;
}

ExitStatus runDelete(const DeleteOptions &options, const CommandContext &context)
{
    const auto book = context.openAddressBookForChange();
    if (!book)
        return ExitStatus::Refused;
    ContactTable table(book, context, options.yes);
    const std::vector<int> rows = table.rowsOf(options.uids);
    if (!rows.empty())
        table.controller().deleteItem(rows);
    return statusOf(table);
}
