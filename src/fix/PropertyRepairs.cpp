// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/PropertyRepairs.h"

#include "contacts/model/ABLabels.h"

#include <algorithm>
#include <array>
#include <unordered_set>

namespace {

void replaceSpacesInFirstName(ABPerson &person, QLatin1StringView by)
{
    const PersonRecordPtr record = person.record();
    if (const QString *name = record->text(kABFirstNameProperty))
        person.setValue(QString(*name).replace(u' ', by), kABFirstNameProperty);
}

} // namespace

void removeSpacesInFirstName(ABPerson &person)
{
    replaceSpacesInFirstName(person, QLatin1StringView(""));
}

void hyphenateFirstName(ABPerson &person)
{
    replaceSpacesInFirstName(person, QLatin1StringView("-"));
}

void removeTitle(ABPerson &person)
{
    person.removeValueForProperty(kABTitleProperty);
}

void removeSuffix(ABPerson &person)
{
    person.removeValueForProperty(kABSuffixProperty);
}

void convertToCompany(ABPerson &person)
{
    person.setValue(kABShowAsCompany, kABPersonFlags);
}

bool fillMissingName(ABPerson &person, ABProperty name)
{
    return !person.record()->text(name) && person.setValue(QStringLiteral("???"), name);
}

ABMultiValue withoutRepeatedValues(const ABMultiValue &values)
{
    ABMutableMultiValue kept;
    std::unordered_set<ABMultiValue::Value, ABValueHash> seen;
    for (const auto &[label, value] : values.entries()) {
        if (seen.insert(value).second)
            kept.addValue(value, label);
    }
    return kept;
}

ABMultiValue emailsWithoutLabel(const ABMultiValue &emails, const QString &sharedLabel)
{
    static const std::array labels{kABHomeLabel, kABWorkLabel, kABOtherLabel};
    ABMutableMultiValue kept;
    const auto isStandard = [](const QString &label) { return std::ranges::find(labels, label) != labels.end(); };
    if (!isStandard(sharedLabel))
        return kept;
    for (const auto &[label, value] : emails.entries()) {
        if (isStandard(label) && label != sharedLabel)
            kept.addValue(value, label);
    }
    return kept;
}
