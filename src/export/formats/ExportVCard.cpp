// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/ExportVCard.h"

#include "contacts/model/ABLabels.h"
#include "export/formats/ExportColumns.h"
#include "export/formats/OutputFile.h"
#include "export/office/WriteAll.h"

#include <array>

namespace {

constexpr auto kTexts = std::to_array<std::pair<Field, ABProperty>>({
    {Field::FirstName, kABFirstNameProperty},
    {Field::LastName, kABLastNameProperty},
    {Field::MaidenName, kABMaidenNameProperty},
    {Field::MiddleName, kABMiddleNameProperty},
    {Field::Company, kABOrganizationProperty},
    {Field::JobTitle, kABJobTitleProperty},
    {Field::Note, kABNoteProperty},
    {Field::Suffix, kABSuffixProperty},
    {Field::PhoneticFirstName, kABFirstNamePhoneticProperty},
    {Field::PhoneticLastName, kABLastNamePhoneticProperty},
});

struct LabelledField
{
    Field field;
    const QString &storeLabel;
};

// The main phone is not among them: it was always looked for under a name that no field has.
const auto kPhones = std::to_array<LabelledField>({
    {Field::WorkPhone, kABPhoneWorkLabel},
    {Field::HomePhone, kABPhoneHomeLabel},
    {Field::Mobile, kABPhoneMobileLabel},
    {Field::HomeFax, kABPhoneHomeFAXLabel},
    {Field::WorkFax, kABPhoneWorkFAXLabel},
    {Field::Pager, kABPhonePagerLabel},
});

const auto kEmails = std::to_array<LabelledField>({
    {Field::HomeEmail, kABEmailHomeLabel},
    {Field::WorkEmail, kABEmailWorkLabel},
});

const auto kRelatedNames = std::to_array<LabelledField>({
    {Field::Father, kABFatherLabel},
    {Field::Mother, kABMotherLabel},
    {Field::Parent, kABParentLabel},
    {Field::Brother, kABBrotherLabel},
    {Field::Sister, kABSisterLabel},
    {Field::Child, kABChildLabel},
    {Field::Friend, kABFriendLabel},
    {Field::Spouse, kABSpouseLabel},
    {Field::Partner, kABParentLabel}, // on purpose
    {Field::Assistant, kABAssistantLabel},
    {Field::Manager, kABManagerLabel},
});

ABMultiValue labelled(const RowTexts &texts, std::span<const LabelledField> fields)
{
    std::vector<ABMultiValue::Entry> entries;
    for (const auto &[field, label] : fields) {
        if (const QString *text = texts.at(field))
            entries.push_back({label, *text});
    }
    return ABMultiValue(std::move(entries));
}

/// Both of them always, empty or not.
ABMultiValue addresses(const RowTexts &texts)
{
    std::vector<ABMultiValue::Entry> entries;
    for (const FieldGroup group : {FieldGroup::Home, FieldGroup::Work}) {
        ABDictionary address;
        for (const FieldInfo &info : fieldsOfGroup(kABAddressProperty, group)) {
            const QString *text = texts.at(info.field);
            if (text && info.part != kABAddressCountryCodeKey)
                address.setValue(*text, *info.part);
        }
        entries.push_back({labelOfGroup(group), std::move(address)});
    }
    return ABMultiValue(std::move(entries));
}

void setAccounts(PersonRecord &record, const RowTexts &texts)
{
    std::vector<ABMultiValue::Entry> entries;
    for (const FieldGroup group : {FieldGroup::Home, FieldGroup::Work}) {
        for (const FieldInfo &info : fieldsOfGroup(kABInstantMessageProperty, group)) {
            if (const QString *user = texts.at(info.field))
                entries.push_back({labelOfGroup(group),
                    ABDictionary{{kABInstantMessageServiceKey, info.service}, {kABInstantMessageUsernameKey, *user}}});
        }
    }
    if (!entries.empty())
        record.setMultiValue(kABInstantMessageProperty, ABMultiValue(std::move(entries)));
}

void setProfiles(PersonRecord &record, const RowTexts &texts)
{
    std::vector<ABMultiValue::Entry> entries;
    for (const FieldInfo &info : fieldsOfProperty(kABSocialProfileProperty)) {
        if (const QString *user = texts.at(info.field))
            entries.push_back({kABHomeLabel,
                ABDictionary{{kABSocialProfileServiceKey, info.service}, {kABSocialProfileUsernameKey, *user}}});
    }
    if (!entries.empty())
        record.setMultiValue(kABSocialProfileProperty, ABMultiValue(std::move(entries)));
}

PersonRecord recordOf(const PersonDictionary &row)
{
    RowTexts texts;
    texts.read(row);
    PersonRecord record;
    for (const auto &[field, property] : kTexts) {
        if (const QString *text = texts.at(field))
            record.setText(property, *text);
    }
    if (const FieldValue birthday = row.value(Field::Birthday); std::holds_alternative<QDate>(birthday))
        record.setValue(kABBirthdayProperty, std::get<QDate>(birthday));
    record.setMultiValue(kABAddressProperty, addresses(texts));
    setAccounts(record, texts);
    setProfiles(record, texts);
    record.setMultiValue(kABPhoneProperty, labelled(texts, kPhones));
    record.setMultiValue(kABEmailProperty, labelled(texts, kEmails));
    record.setMultiValue(kABRelatedNamesProperty, labelled(texts, kRelatedNames));
    return record;
}

bool writeCard(const QByteArray &card, const QString &path, ExportReport &report)
{
    const auto fill = [&card](QIODevice &target) { return writeAll(target, card); };
    return report.take(OutputFile::write(path, fill, OutputFile::IfTaken::Replace));
}

} // namespace

bool ExportVCard::exportVcardWithArray(const PersonRows &rows, const QString &toPath, ExportReport *report) const
{
    ExportReport unwanted;
    bool isLastWritten = false;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const QString path = toPath % QStringLiteral("/export_") % QString::number(i) % QStringLiteral(".vcf");
        const QByteArray card = creatPersonWithDictionary(*rows[i])->vCardRepresentation();
        isLastWritten = writeCard(card, path, report ? *report : unwanted);
    }
    return isLastWritten;
}

bool ExportVCard::exportVcardWithDictionary(
    const PersonDictionary &row, const QString &toPath, ExportReport *report) const
{
    ExportReport unwanted;
    const QByteArray card = creatPersonWithDictionary(row)->vCardRepresentation();
    return writeCard(card, toPath % QStringLiteral("/export.vcf"), report ? *report : unwanted);
}

ABPersonPtr ExportVCard::creatPersonWithDictionary(const PersonDictionary &row) const
{
    auto person = std::make_shared<ABPerson>();
    person->replaceRecord(std::make_shared<const PersonRecord>(recordOf(row)));
    return person;
}
