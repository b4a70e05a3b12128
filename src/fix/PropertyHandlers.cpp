// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/FixHandlers.h"

#include "fix/FixLog.h"
#include "fix/PropertyRepairs.h"
#include "fix/RepairOptions.h"
#include "fix/RepairSteps.h"

#include <array>

namespace {

void logReason(const char *text, const Error &error)
{
    qCDebug(lcFix, "%s%s", text, qUtf8Printable(error.description()));
}

struct SpaceRepair
{
    QLatin1StringView option;
    void (*repair)(ABPerson &);
    const char *added; // the lines of the log
    const char *saved;
    const char *notSaved;
    const char *notAdded;
};

constexpr std::array kSpaceRepairs{
    SpaceRepair{
        kRemoveTheSpace, removeSpacesInFirstName, "设置修改成功", "保存到数据成功", "保存到数据失败，失败原因：", ""},
    SpaceRepair{kHyphenateFirstName, hyphenateFirstName, "设置成功", " 保存成功", "保存失败", "设置失败。原因："},
};

FixOutcome repairSpaces(const Finding &finding, const SpaceRepair &row)
{
    FixOutcome outcome;
    RepairSteps steps(outcome, finding);
    row.repair(*finding.person);
    Error error;
    if (!steps.addRecord(finding.person, &error)) {
        logReason(row.notAdded, error);
        return outcome;
    }
    qCDebug(lcFix, "%s", row.added);
    outcome.removesNode = steps.save(&error);
    if (outcome.removesNode)
        qCDebug(lcFix, "%s", row.saved);
    else
        logReason(row.notSaved, error);
    return outcome;
}

/// Changes the person and saves; the finding stays when that failed.
FixOutcome repairAndSave(const Finding &finding, void (*repair)(ABPerson &))
{
    FixOutcome outcome;
    RepairSteps steps(outcome, finding);
    repair(*finding.person);
    steps.addRecord(finding.person);
    outcome.removesNode = steps.save();
    return outcome;
}

FixOutcome fillMissingNames(const Finding &finding)
{
    FixOutcome outcome;
    RepairSteps steps(outcome, finding);
    const PersonRecordPtr record = finding.person->record();
    const int missing = (record->text(kABFirstNameProperty) ? 0 : 1) + (record->text(kABLastNameProperty) ? 0 : 1);
    for (int save = 0; save < missing; ++save) {
        // The first save writes both; the next one what a conflict made it give up.
        fillMissingName(*finding.person, kABFirstNameProperty);
        fillMissingName(*finding.person, kABLastNameProperty);
        steps.addRecord(finding.person);
        if (steps.save())
            qCDebug(lcFix, "保存成功");
    }
    outcome.removesNode = true;
    return outcome;
}

FixOutcome removeBlankText(const Finding &finding, ABProperty property, const char *removedLine)
{
    FixOutcome outcome;
    RepairSteps steps(outcome, finding);
    if (finding.person->removeValueForProperty(property)) {
        qCDebug(lcFix, "%s", removedLine);
        if (steps.save())
            qCDebug(lcFix, "提交数据库成功");
    }
    outcome.removesNode = true;
    return outcome;
}

QString textOf(const ABMultiValue::Value &value)
{
    if (const auto *text = std::get_if<QString>(&value))
        return *text;
    QStringList parts;
    for (const auto &[key, text] : std::get<ABDictionary>(value))
        parts += QString(keyInfo(key).name) % u'=' % text;
    return parts.join(u';');
}

void logValues(const ABMultiValue &values)
{
    QStringList texts;
    for (const auto &entry : values.entries())
        texts += textOf(entry.value);
    qCDebug(lcFix, "%s", qUtf8Printable(texts.join(u',')));
}

struct RepeatedValueLines
{
    const char *removed = nullptr;
    const char *set = nullptr; ///< with none, the person is not handed to the address book again before the save
};

FixOutcome removeRepeatedValues(const Finding &finding, ABProperty property, const RepeatedValueLines &lines)
{
    FixOutcome outcome;
    outcome.removesNode = true;
    RepairSteps steps(outcome, finding);
    const PersonRecordPtr record = finding.person->record();
    const ABMultiValue *values = record->multiValue(property);
    const ABMultiValue kept = withoutRepeatedValues(values ? *values : ABMultiValue());
    logValues(kept);
    if (!finding.person->removeValueForProperty(property))
        return outcome;
    if (lines.removed)
        qCDebug(lcFix, "%s", lines.removed);
    finding.person->setValue(kept, property);
    if (lines.set) {
        if (!steps.addRecord(finding.person))
            return outcome;
        qCDebug(lcFix, "%s", lines.set);
    }
    if (steps.save())
        qCDebug(lcFix, "保存数据库成功");
    return outcome;
}

FixOutcome edit()
{
    FixOutcome outcome;
    outcome.editsInContacts = true;
    outcome.removesNode = true;
    return outcome;
}

const DeletionLines kSavedOnStandardOutput{.saved = {lcFixStdout, "删除成功"}};

} // namespace

FixOutcome processSpaceInFirstNameContacts(const Finding &finding, const QString &option, AlertPanel &alertPanel)
{
    for (const SpaceRepair &row : kSpaceRepairs) {
        if (row.option == option)
            return repairSpaces(finding, row);
    }
    if (option == kDeleteThisContact)
        return deleteContact(finding, alertPanel, {.saved = {lcFix, "保存到数据成功"}});
    return {};
}

FixOutcome processUnusualTitleContacts(const Finding &finding, const QString &option, AlertPanel &alertPanel)
{
    if (option == kDeleteThisContact)
        return deleteContact(finding, alertPanel, kSavedOnStandardOutput);
    if (option != kRemoveTheTitle)
        return {};
    FixOutcome outcome = repairAndSave(finding, removeTitle);
    if (outcome.removesNode)
        qCDebug(lcFixStdout, "删除成功");
    else
        qCDebug(lcFix, "保存失败");
    return outcome;
}

FixOutcome processBadSuffixContacts(const Finding &finding, const QString &option, AlertPanel &alertPanel)
{
    if (option == kDeleteThisContact)
        return deleteContact(finding, alertPanel, kSavedOnStandardOutput);
    return option == kRemoveTheSuffix ? repairAndSave(finding, removeSuffix) : FixOutcome();
}

FixOutcome processOnlyOneNameContacts(const Finding &finding, const QString &option, AlertPanel &alertPanel)
{
    if (option == kDeleteThisContact) {
        DeletionLines lines = kSavedOnStandardOutput;
        lines.sweptNode = "找到与那个人相同的";
        return deleteContact(finding, alertPanel, lines);
    }
    if (option == kUseQuestionMarks)
        return fillMissingNames(finding);
    if (option != kConvertToCompany)
        return {};
    FixOutcome outcome = repairAndSave(finding, convertToCompany);
    if (outcome.removesNode)
        qCDebug(lcFix, "保存成功");
    return outcome;
}

FixOutcome processEmptyNotesContacts(const Finding &finding, const QString &, AlertPanel &)
{
    return removeBlankText(finding, kABNoteProperty, "删除Note成功");
}

FixOutcome processEmptyNicknameContacts(const Finding &finding, const QString &, AlertPanel &)
{
    return removeBlankText(finding, kABNicknameProperty, "删除Nickname成功");
}

FixOutcome processDuplicateEmailContacts(const Finding &finding, const QString &, AlertPanel &)
{
    return removeRepeatedValues(finding, kABEmailProperty, {"删除旧的email成功", "设置新的email成功"});
}

FixOutcome processDuplicatePhoneContacts(const Finding &finding, const QString &, AlertPanel &)
{
    return removeRepeatedValues(finding, kABPhoneProperty, {});
}

FixOutcome processDuplicateAddresslContacts(const Finding &finding, const QString &, AlertPanel &)
{
    return removeRepeatedValues(finding, kABAddressProperty, {"删除旧的address成功", "设置新的address成功"});
}

FixOutcome processInvalidCharContacts(const Finding &, const QString &, AlertPanel &)
{
    return edit();
}

FixOutcome processBlankNameContacts(const Finding &finding, const QString &option, AlertPanel &alertPanel)
{
    if (option == kEditInContacts)
        return edit();
    if (option == kDeleteThisContact)
        return deleteContact(finding, alertPanel, {.notRemoved = {lcFix, "删除失败"}});
    return {};
}

namespace {

struct HandlerRow
{
    Condition condition;
    FixHandler handler;
};

constexpr std::array kHandlers{
    HandlerRow{Condition::SingleName, processOnlyOneNameContacts},
    HandlerRow{Condition::DupAddress, processDuplicateAddresslContacts},
    HandlerRow{Condition::InvalidChar, processInvalidCharContacts},
    HandlerRow{Condition::SpaceInFirstName, processSpaceInFirstNameContacts},
    HandlerRow{Condition::ShareEmail, processShareEmailContacts},
    HandlerRow{Condition::DuplicateContacts, processDuplicateContact},
    HandlerRow{Condition::EmptyNotes, processEmptyNotesContacts},
    HandlerRow{Condition::EmptyNickname, processEmptyNicknameContacts},
    HandlerRow{Condition::DupPhone, processDuplicatePhoneContacts},
    HandlerRow{Condition::DupEmail, processDuplicateEmailContacts},
    HandlerRow{Condition::UnusualTitle, processUnusualTitleContacts},
    HandlerRow{Condition::UnusualSuffix, processBadSuffixContacts},
    HandlerRow{Condition::BlankName, processBlankNameContacts},
};
static_assert(coversConditions(kHandlers, &HandlerRow::condition));

} // namespace

FixHandler handlerFor(Condition condition)
{
    return std::ranges::find(kHandlers, condition, &HandlerRow::condition)->handler;
}
