// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"

#include "results/ConditionGroups.h"
#include "scan/ScanAddressBook.h"

#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;

namespace {

/// A scan's surroundings on the command line: no progress display, no buttons; the message of an empty scan is kept.
class CommandLineDelegate : public ScanDelegate, public AlertPanel
{
public:
    void closeProgress() override { }
    void makeButtonEnable() override { }
    AlertPanel &alertPanel() override { return *this; }
    Answer runAlertPanel(const QString &, const QString &message, const QString &, const QString &) override
    {
        m_message = message;
        return Answer::Default;
    }

    const QString &message() const { return m_message; }

private:
    QString m_message;
};

std::string uidOf(const ABPersonPtr &person)
{
    return person->uniqueId().toStdString();
}

Json uidsOf(const std::vector<ABPersonPtr> &people)
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
            {{"SearchedPerson", uidOf(match.searchedPerson)}, {"MatchPersonsArray", uidsOf(match.matchPersonsArray)},
                {"DuplicateEmailType", label.isNull() ? Json() : Json(label.toStdString())}});
    }
    return json;
}

Json toJson(const std::vector<ABPersonPtr> &people)
{
    return uidsOf(people);
}

Json toJson(const ScanResult &result)
{
    Json json = Json::object();
    for (const auto &[condition, findings] : result) {
        json[conditionInfo(condition).key.data()] = std::visit([](const auto &list) { return toJson(list); }, findings);
    }
    return json;
}

const ABPersonPtr &personOf(const ABPersonPtr &person)
{
    return person;
}

const ABPersonPtr &personOf(const EmailMatch &match)
{
    return match.searchedPerson;
}

void printTree(const ScanResult &result, std::ostream &out)
{
    for (const ConditionGroup &group : conditionGroups()) {
        const Findings *findings = result.find(group.condition);
        if (!findings)
            continue;
        std::visit(
            [&](const auto &list) {
                out << group.name.data() << " (" << list.size() << ")\n";
                for (const auto &finding : list) {
                    const ABPersonPtr &person = personOf(finding);
                    out << "    "
                        << onOneLine(person->uniqueId() % QStringLiteral("  ") % displayName(*person->record())) << "  "
                        << group.rowDescription.data() << '\n';
                }
            },
            *findings);
    }
}

QStringList titlesOf(const ScanOptions &options)
{
    QStringList titles;
    for (const auto &title : options.titles)
        titles.push_back(QString::fromStdString(title));
    if (options.titles.empty()) {
        for (const Condition condition : preferredOrder())
            titles.push_back(conditionInfo(condition).title);
    }
    return titles;
}

} // namespace

ExitStatus runScan(const ScanOptions &options, const CommandContext &context)
{
    const auto book = context.openAddressBook();
    if (!book)
        return ExitStatus::Refused;
    CommandLineDelegate delegate;
    ScanAddressBook scanner(delegate);
    ScanResult result;
    QObject::connect(
        &scanner, &ScanAddressBook::scanOver, &scanner, [&result](const ScanResult &found) { result = found; });
    scanner.scanEntireAddressBook(titlesOf(options));

    std::ostream &out = context.console.out;
    if (options.json)
        out << toJson(result).dump() << '\n';
    else if (result.isEmpty())
        out << delegate.message().toStdString() << '\n';
    else
        printTree(result, out);
    return options.exitCode && !result.isEmpty() ? ExitStatus::Refused : ExitStatus::Done;
}
