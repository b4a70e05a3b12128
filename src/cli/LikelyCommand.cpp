// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"
#include "cli/ProgressLine.h"
#include "contacts/model/NameTexts.h"
#include "fix/IgnoredFindings.h"
#include "likeness/LikelyDuplicates.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>

namespace {

constexpr std::array kGradeNames{"certain", "likely", "possible"}; // in the order of LikenessGrade

const char *nameOf(LikenessGrade grade)
{
    return kGradeNames[static_cast<std::size_t>(grade)];
}

std::string uidOf(const PersonSnapshot &person)
{
    return person.person->uniqueId().toStdString();
}

void printJson(const LikelyGroup &group, const std::vector<PersonSnapshot> &people, std::ostream &out)
{
    using Json = nlohmann::ordered_json;
    Json members = Json::array();
    for (const std::size_t member : group.members)
        members.push_back(uidOf(people[member]));
    Json reasons = Json::array();
    for (const LikenessReason &reason : group.reasons) {
        reasons.push_back({{"between", {uidOf(people[reason.first]), uidOf(people[reason.second])}},
            {"says", reason.says.toStdString()}});
    }
    out << Json{{"members", members}, {"grade", nameOf(group.grade)}, {"reasons", reasons}}.dump() << '\n';
}

/// The members of a group, then its pairs with their reasons.
void printText(const LikelyGroup &group, const std::vector<PersonSnapshot> &people, std::ostream &out)
{
    out << nameOf(group.grade) << " (" << group.members.size() << ")\n";
    for (const std::size_t member : group.members) {
        const auto &[person, record] = people[member];
        out << "    " << onOneLine(person->uniqueId() % QStringLiteral("  ") % displayName(*record)) << '\n';
    }
    for (std::size_t i = 0; i < group.reasons.size(); ++i) {
        const LikenessReason &reason = group.reasons[i];
        const bool isSamePair =
            i > 0 && group.reasons[i - 1].first == reason.first && group.reasons[i - 1].second == reason.second;
        if (!isSamePair) {
            out << (i > 0 ? "\n        " : "        ")
                << onOneLine(people[reason.first].person->uniqueId() % QStringLiteral(" and ")
                       % people[reason.second].person->uniqueId())
                << ": ";
        }
        out << (isSamePair ? ", " : "") << reason.says.toStdString();
    }
    out << '\n';
}

} // namespace

ExitStatus runLikely(const LikelyOptions &options, const CommandContext &context)
{
    const auto book = context.openAddressBook();
    if (!book)
        return ExitStatus::Refused;
    const PeopleSnapshot people = book->snapshot();
    const auto grade = static_cast<LikenessGrade>(
        std::find(kGradeNames.begin(), kGradeNames.end(), options.grade) - kGradeNames.begin());
    const auto ignored = IgnoredFindings::of(*book);
    if (!ignored)
        return context.refuse(ignored.error().text);
    const LikelyDuplicates found = [&] {
        ProgressLine progress(context.console, {});
        const auto showProgress = [&progress](double done) {
            progress.show(int(100 * done));
            return true;
        };
        return findLikelyDuplicates(*people, grade, regionOfUser(), showProgress, differenceAmong(*people, *ignored));
    }();
    if (found.crowded > 0) {
        context.report(QString::number(found.crowded)
            % QStringLiteral(" contacts have something in common with more than 40 others each: of these, only those "
                             "next to each other by name were compared"));
    }
    for (const LikelyGroup &group : found.groups)
        options.json ? printJson(group, *people, context.console.out) : printText(group, *people, context.console.out);
    if (found.groups.empty() && !options.json)
        context.console.out << "No likely duplicates found.\n";
    return ExitStatus::Done;
}
