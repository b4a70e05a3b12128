// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"
#include "contacts/cards/RecordJson.h"
#include "contacts/model/NameTexts.h"
#include "contacts/model/RecordDifferences.h"

#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;

namespace {

QString timeText(const ChangeSummary &step)
{
    return step.savedAt.toLocalTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}

QString lineOf(const ChangeSummary &step)
{
    return step.cause.id % QStringLiteral("  ") % timeText(step) % QStringLiteral("  ")
        % countsText(step.added, step.changed, step.removed) % QStringLiteral("  ") % textOf(step.cause);
}

Json jsonOf(const ChangeSummary &step)
{
    return {{"id", step.cause.id.toStdString()}, {"savedAt", step.savedAt.toString(Qt::ISODateWithMs).toStdString()},
        {"kind", std::string(nameOfKind(step.cause.kind).data())},
        {"description", step.cause.description.toStdString()}, {"added", step.added}, {"changed", step.changed},
        {"removed", step.removed}};
}

std::string changeName(const RecordedChange &change)
{
    return !change.before ? "added" : change.after || change.afterIsLost ? "changed" : "removed";
}

Json jsonOf(const PersonRecordPtr &record)
{
    if (!record)
        return {};
    Json json = Json::parse(recordToJson(QString(), *record));
    for (const KeptLine &line : record->keptLines())
        json["cardLines"].push_back(
            Json::array({line.text.toStdString(), line.basis.isNull() ? Json() : Json(line.basis.toStdString())}));
    return json;
}

void printJson(const RecordedChange &change, std::ostream &out)
{
    Json json = {{"uid", change.uid.toStdString()}, {"change", changeName(change)}, {"before", jsonOf(change.before)}};
    if (!change.afterIsLost)
        json["after"] = jsonOf(change.after);
    out << json.dump() << '\n';
}

void printText(const RecordedChange &change, std::ostream &out)
{
    const PersonRecordPtr named = change.after ? change.after : change.before;
    const QString name = named ? readableName(*named) : QString();
    out << changeName(change) << "  " << onOneLine(change.uid % QStringLiteral("  ") % name) << '\n';
    if (change.afterIsLost) {
        out << "    changed since past the history; how it was saved is not known any more\n";
        return;
    }
    for (const RecordDifference &each : recordDifferences(change.before.get(), change.after.get()))
        out << "    " << onOneLine(textOf(each)) << '\n';
}

} // namespace

ExitStatus runHistory(const HistoryOptions &options, const CommandContext &context)
{
    const auto book = context.openAddressBook();
    if (!book)
        return ExitStatus::Refused;
    auto history = book->history();
    if (!history)
        return context.refuse(history.error().text);
    if (options.limit > 0 && history->size() > std::size_t(options.limit))
        history->resize(std::size_t(options.limit));
    for (const ChangeSummary &step : *history)
        context.console.out << (options.json ? jsonOf(step).dump() : onOneLine(lineOf(step))) << '\n';
    return ExitStatus::Done;
}

ExitStatus runHistoryShow(const HistoryShowOptions &options, const CommandContext &context)
{
    const auto book = context.openAddressBook();
    if (!book)
        return ExitStatus::Refused;
    const auto step = book->historyStep(QString::fromStdString(options.id));
    if (!step)
        return context.refuse(step.error().text);
    if (!options.json)
        context.console.out << onOneLine(lineOf(step->summary)) << '\n';
    for (const RecordedChange &change : step->changes)
        (options.json ? printJson : printText)(change, context.console.out);
    return ExitStatus::Done;
}

ExitStatus runHistoryRestore(const HistoryRestoreOptions &options, const CommandContext &context)
{
    const auto book = context.openAddressBookForChange();
    if (!book)
        return ExitStatus::Refused;
    const auto plan = planRestore(*book, textsOf(options.ids));
    return applyAndReport(*book, plan, context);
}
