// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"
#include "contacts/model/NameTexts.h"
#include "fix/IgnoredFindings.h"
#include "results/ConditionGroups.h"
#include "scan/ScanAddressBook.h"

#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;

namespace {

std::string uidOf(const ABPersonPtr &person)
{
    return person->uniqueId().toStdString();
}

Json toJson(const std::vector<ABPersonPtr> &people)
{
    Json uids = Json::array();
    for (const auto &person : people)
        uids.push_back(uidOf(person));
    return uids;
}

Json toJson(const std::vector<EmailMatch> &matches)
{
    Json json = Json::array();
    for (const auto &match : matches) {
        const QString &label = match.duplicateEmailType;
        json.push_back(
            {{"SearchedPerson", uidOf(match.searchedPerson)}, {"MatchPersonsArray", toJson(match.matchPersonsArray)},
                {"DuplicateEmailType", label.isNull() ? Json() : Json(label.toStdString())}});
    }
    return json;
}

Json toJson(const ScanResult &result)
{
    Json json = Json::object();
    for (const auto &[condition, findings] : result) {
        json[conditionInfo(condition).key.data()] = std::visit([](const auto &list) { return toJson(list); }, findings);
    }
    return json;
}

void printTree(const ScanResult &result, std::ostream &out)
{
    for (const ConditionGroup &group : conditionGroups()) {
        const std::vector<Finding> findings = findingsOf(result, group.condition);
        if (findings.empty())
            continue;
        out << group.name.data() << " (" << findings.size() << ")\n";
        for (const Finding &finding : findings)
            out << "    "
                << onOneLine(finding.person->uniqueId() % QStringLiteral("  ") % displayName(*finding.person->record()))
                << "  " << group.rowDescription.data() << '\n';
    }
}

} // namespace

ExitStatus runScan(const ScanOptions &options, const CommandContext &context)
{
    const auto book = context.openAddressBook();
    if (!book)
        return ExitStatus::Refused;
    const QStringList titles = options.titles.empty() ? conditionTitles() : textsOf(options.titles);
    for (const QString &title : titles) {
        if (!conditionTitled(title)) // which the scan passes over
            context.report(QStringLiteral("--condition: there is no condition \"") % title % u'"');
    }
    ScanResult result = ScanAddressBook::examine(titles);
    if (options.withoutIgnored) {
        const auto ignored = IgnoredFindings::of(*book);
        if (!ignored)
            return context.refuse(ignored.error().text);
        result = ignored->split(result).open;
    }
    std::ostream &out = context.console.out;
    if (options.json)
        out << toJson(result).dump() << '\n';
    else if (result.isEmpty())
        out << kNothingFound.data() << '\n';
    else
        printTree(result, out);
    return options.exitCode && !result.isEmpty() ? ExitStatus::Refused : ExitStatus::Done;
}
