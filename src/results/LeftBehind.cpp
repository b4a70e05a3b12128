// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/LeftBehind.h"

#include "contacts/model/RecordDifferences.h"
#include "fix/MergeContacts.h"
#include "fix/PropertyRepairs.h"
#include "fix/RepairOptions.h"

namespace {

std::vector<LostValue> lostByMerge(const Finding &finding)
{
    const QList<ABPersonPtr> people = peopleToMerge(finding);
    if (people.isEmpty())
        return {};
    return lostValues(recordsOf(people), {mergeContacts(people)->record()});
}

std::vector<LostValue> lostWithDuplicates(const Finding &finding)
{
    const bool isShared = finding.condition == Condition::ShareEmail;
    QList<ABPersonPtr> people = isShared ? finding.duplicateEmailArray : peopleNamedLike(*finding.person);
    people.removeIf([](const ABPersonPtr &person) { return person->isRemoved(); });
    if (isShared)
        people.prepend(finding.person); // who stays
    if (people.isEmpty())
        return {};
    return lostValues(recordsOf(people), {people.front()->record()});
}

std::vector<LostValue> lostWithEmail(const Finding &finding)
{
    const PersonRecordPtr before = finding.person->record();
    const ABMultiValue *emails = before->multiValue(kABEmailProperty);
    if (!emails)
        return {};
    const auto changed = std::make_shared<ABPerson>(QString(), before);
    changed->setValue(emailsWithoutLabel(*emails, finding.duplicateEmailType), kABEmailProperty);
    std::vector<PersonRecordPtr> after = recordsOf(finding.duplicateEmailArray); // they keep the shared address
    after.push_back(changed->record());
    return lostValues({before}, after);
}

} // namespace

std::vector<LostValue> leftBehind(const Finding &finding, const QString &option)
{
    if (option == kMergeContacts)
        return lostByMerge(finding);
    if (option == kDeleteDuplicateContacts)
        return lostWithDuplicates(finding);
    return option == kRemoveEmail ? lostWithEmail(finding) : std::vector<LostValue>();
}

QString linesOf(const std::vector<LostValue> &values)
{
    QStringList lines;
    for (const LostValue &value : values)
        lines += propertyTitle(value.name) % QStringLiteral(": ") % value.text;
    return lines.join(u'\n');
}
