// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"
#include "contacts/model/NameTexts.h"
#include "fix/IgnoredFindings.h"
#include "scan/ScanAddressBook.h"

#include <nlohmann/json.hpp>

#include <QHash>
#include <QSet>

namespace {

QString lineOf(const Ignored &entry, const ABAddressBook &book)
{
    QString line = entry.id() % QStringLiteral("  ") % textOf(entry);
    for (const QString &uid : entry.uids) {
        const ABPersonPtr person = book.personWithUniqueId(uid);
        line += QStringLiteral("  ") % uid % QStringLiteral("  ")
            % (person ? displayName(*person->record()) : QStringLiteral("not in the address book"));
    }
    return line;
}

std::string jsonOf(const Ignored &entry)
{
    nlohmann::ordered_json json{{"id", entry.id().toStdString()}};
    if (!entry.condition.isEmpty())
        json["condition"] = entry.condition.toStdString();
    json["uids"] = nlohmann::json::array();
    for (const QString &uid : entry.uids)
        json["uids"].push_back(uid.toStdString());
    if (!entry.condition.isEmpty())
        json["found"] = entry.found.toStdString();
    return json.dump();
}

/// Who is no longer found is reported and left out.
std::vector<Ignored> entriesOfFindings(
    const QString &title, const QStringList &uids, const ABAddressBook &book, const CommandContext &context)
{
    QHash<QString, std::vector<Finding>> findings;
    for (const Finding &finding : findingsOf(ScanAddressBook::examine({title}), *conditionTitled(title)))
        findings[finding.person->uniqueId()].push_back(finding);
    std::vector<Ignored> entries;
    for (const QString &uid : uids) {
        if (!book.personWithUniqueId(uid))
            context.reportMissing(uid);
        else if (!findings.contains(uid))
            context.report(uid % QStringLiteral(": is not found by \"") % title % u'"');
        for (const Finding &finding : findings.value(uid)) {
            if (auto entry = IgnoredFindings::entryFor(finding))
                entries.push_back(std::move(*entry));
        }
    }
    return entries;
}

ExitStatus bringBack(const QStringList &ids, ABAddressBook &book, const CommandContext &context)
{
    const auto ignored = book.ignored();
    if (!ignored)
        return context.refuse(ignored.error().text);
    QSet<QString> known;
    for (const Ignored &entry : *ignored)
        known.insert(entry.id());
    ExitStatus status = ExitStatus::Done;
    for (const QString &id : ids) {
        if (!known.contains(id))
            status = context.refuse(id % QStringLiteral(": nothing is ignored under this id"));
    }
    if (const auto changed = book.changeIgnored({}, ids); !changed)
        return context.refuse(changed.error().text);
    return status;
}

} // namespace

ExitStatus runIgnore(const IgnoreOptions &options, const CommandContext &context)
{
    const QStringList uids = textsOf(options.uids);
    if (options.different && uids.size() < 2)
        return context.refuse(QStringLiteral("ignore --different: name two contacts or more"), ExitStatus::Usage);
    if (options.condition.empty() == !options.different)
        return context.refuse(QStringLiteral("ignore: give either --condition or --different"), ExitStatus::Usage);
    const auto book = context.openAddressBookForChange();
    if (!book)
        return ExitStatus::Refused;
    std::vector<Ignored> entries;
    if (!options.different)
        entries = entriesOfFindings(QString::fromStdString(options.condition), uids, *book, context);
    else if (!peopleNamed(uids, *book, context).isEmpty())
        entries = {IgnoredFindings::differentPeople(uids)};
    if (entries.empty())
        return ExitStatus::Refused;
    if (const auto changed = book->changeIgnored(entries, {}); !changed)
        return context.refuse(changed.error().text);
    QSet<QString> found;
    for (const Ignored &entry : entries) {
        context.console.out << onOneLine(lineOf(entry, *book)) << '\n';
        found += QSet<QString>(entry.uids.begin(), entry.uids.end());
    }
    return found.contains(QSet<QString>(uids.begin(), uids.end())) ? ExitStatus::Done : ExitStatus::Refused;
}

ExitStatus runIgnored(const IgnoredOptions &options, const CommandContext &context)
{
    const QStringList ids = textsOf(options.ids);
    if (options.remove == ids.isEmpty())
        return context.refuse(QStringLiteral("ignored: name ids with --remove, and only then"), ExitStatus::Usage);
    const auto book = options.remove ? context.openAddressBookForChange() : context.openAddressBook();
    if (!book)
        return ExitStatus::Refused;
    if (options.remove)
        return bringBack(ids, *book, context);
    const auto ignored = book->ignored();
    if (!ignored)
        return context.refuse(ignored.error().text);
    for (const Ignored &entry : *ignored)
        context.console.out << (options.json ? jsonOf(entry) : onOneLine(lineOf(entry, *book))) << '\n';
    return ExitStatus::Done;
}
