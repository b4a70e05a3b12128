// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/FixHandlers.h"

#include "fix/FixLog.h"
#include "fix/MergeContacts.h"
#include "fix/PropertyRepairs.h"
#include "fix/RepairOptions.h"
#include "fix/RepairSteps.h"

namespace {

/// The saves and lines that follow the removals one by one. The whole repair is pending before the first of them, which
/// writes all of it at once: a program that is killed leaves all contacts as before or the repair complete.
void saveForEachRemoved(const FixOutcome &outcome, RepairSteps &steps)
{
    for (qsizetype i = 0; i < outcome.removed.size(); ++i) {
        qCDebug(lcFix, "删除重复的联系人成功");
        if (steps.save())
            qCDebug(lcFix, "提交数据库成功");
    }
}

FixOutcome mergeNamesakes(const Finding &finding)
{
    FixOutcome outcome;
    const QList<ABPersonPtr> namesakes = peopleToMerge(finding);
    if (namesakes.isEmpty())
        return outcome;
    const ABPersonPtr merged = mergeContacts(namesakes);
    RepairSteps steps(outcome, finding);
    for (const auto &person : namesakes)
        steps.removeRecord(person);
    if (steps.addRecord(merged))
        outcome.added = merged;
    saveForEachRemoved(outcome, steps);
    if (!outcome.added)
        return outcome;
    qCDebug(lcFix, "添加联系人成功");
    if (steps.save()) {
        qCDebug(lcFix, "提交数据库成功");
        outcome.removesNode = true;
    }
    return outcome;
}

FixOutcome deleteLaterNamesakes(const Finding &finding)
{
    FixOutcome outcome;
    outcome.sweep = FixOutcome::Sweep::Pruning;
    const QList<ABPersonPtr> namesakes = peopleNamedLike(*finding.person);
    if (namesakes.isEmpty())
        return outcome;
    outcome.removesNode = true;
    RepairSteps steps(outcome, finding);
    const QList<ABPersonPtr> later = namesakes.mid(1);
    outcome.sweptUids = uidsOf(later);
    for (const auto &person : later)
        steps.removeRecord(person);
    saveForEachRemoved(outcome, steps);
    return outcome;
}

FixOutcome deleteSharers(const Finding &finding)
{
    FixOutcome outcome;
    outcome.sweep = FixOutcome::Sweep::Pruning;
    outcome.removesNode = true;
    RepairSteps steps(outcome, finding);
    outcome.sweptUids = uidsOf(finding.duplicateEmailArray);
    for (const auto &person : finding.duplicateEmailArray)
        steps.removeRecord(person);
    if (steps.save())
        qCDebug(lcFix, "提交数据库成功");
    return outcome;
}

FixOutcome mergeSharers(const Finding &finding)
{
    FixOutcome outcome;
    const QList<ABPersonPtr> people = peopleToMerge(finding);
    if (people.isEmpty())
        return outcome;
    const ABPersonPtr merged = mergeContacts(people);
    RepairSteps steps(outcome, finding);
    for (const auto &person : people) {
        if (steps.removeRecord(person))
            qCDebug(lcFix, "删除联系人成功");
    }
    if (!steps.addRecord(merged))
        return outcome;
    outcome.added = merged;
    if (steps.save()) {
        qCDebug(lcFix, "添加联系人并提交数据库成功");
        outcome.removesNode = true;
    }
    return outcome;
}

FixOutcome removeSharedEmail(const Finding &finding)
{
    FixOutcome outcome;
    ABPerson &person = *finding.person;
    const PersonRecordPtr record = person.record();
    const ABMultiValue *emails = record->multiValue(kABEmailProperty);
    const ABMultiValue kept = emailsWithoutLabel(emails ? *emails : ABMultiValue(), finding.duplicateEmailType);
    if (!person.removeValueForProperty(kABEmailProperty))
        return outcome;
    qCDebug(lcFix, "删除旧邮件成功");
    if (!person.setValue(kept, kABEmailProperty))
        return outcome;
    qCDebug(lcFix, "删除homeEmail成功");
    RepairSteps steps(outcome, finding);
    steps.addRecord(finding.person);
    if (steps.save()) {
        qCDebug(lcFix, "保存数据库成功");
        outcome.removesNode = true;
    }
    return outcome;
}

const DeletionLine kRemovedLine{lcFixStdout, "删除成功"};
const DeletionLine kSavedLine{lcFixStdout, "保存数据库成功"};

} // namespace

FixOutcome processDuplicateContact(const Finding &finding, const QString &option, AlertPanel &alertPanel)
{
    if (option == kDeleteThisContact) {
        return deleteContact(finding, alertPanel,
            {.removed = kRemovedLine,
                .saved = kSavedLine,
                .notRemoved = {lcFix, "删除联系人失败，失败原因:"},
                .notRemovedSaysWhy = true});
    }
    if (option == kDeleteDuplicateContacts)
        return deleteLaterNamesakes(finding);
    return option == kMergeContacts ? mergeNamesakes(finding) : FixOutcome();
}

FixOutcome processShareEmailContacts(const Finding &finding, const QString &option, AlertPanel &alertPanel)
{
    if (option == kDeleteThisContact)
        return deleteContact(finding, alertPanel, {.removed = kRemovedLine, .saved = kSavedLine});
    if (option == kDeleteDuplicateContacts)
        return deleteSharers(finding);
    if (option == kMergeContacts)
        return mergeSharers(finding);
    return option == kRemoveEmail ? removeSharedEmail(finding) : FixOutcome();
}
