// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/MergeContacts.h"

#include "contacts/model/ABLabels.h"
#include "contacts/model/NameTexts.h"
#include "fix/FixLog.h"
#include "table/fields/PersonDictionary.h"

#include <QSet>

#include <algorithm>
#include <array>

namespace {

/// A kind of phone, e-mail or related name: the fields that feed it and the label it is written under.
struct Kind
{
    ABProperty property;
    const QString &label;
    std::vector<Field> fields;
};

/// In the order in which the values are written. No field feeds the main number or the mother: a dictionary has no
/// field "Main", and mothers go to the mobile numbers.
const std::array kKinds{
    Kind{kABPhoneProperty, kABPhoneWorkLabel, {Field::WorkPhone}},
    Kind{kABPhoneProperty, kABPhoneHomeLabel, {Field::HomePhone}},
    Kind{kABPhoneProperty, kABPhoneMobileLabel, {Field::Mobile, Field::Mother}},
    Kind{kABPhoneProperty, kABPhoneMainLabel, {}},
    Kind{kABPhoneProperty, kABPhoneHomeFAXLabel, {Field::HomeFax}},
    Kind{kABPhoneProperty, kABPhoneWorkFAXLabel, {Field::WorkFax}},
    Kind{kABPhoneProperty, kABPhonePagerLabel, {Field::Pager}},
    Kind{kABRelatedNamesProperty, kABFatherLabel, {Field::Father}},
    Kind{kABRelatedNamesProperty, kABMotherLabel, {}},
    Kind{kABRelatedNamesProperty, kABParentLabel, {Field::Parent}},
    Kind{kABRelatedNamesProperty, kABBrotherLabel, {Field::Brother}},
    Kind{kABRelatedNamesProperty, kABSisterLabel, {Field::Sister}},
    Kind{kABRelatedNamesProperty, kABChildLabel, {Field::Child}},
    Kind{kABRelatedNamesProperty, kABFriendLabel, {Field::Friend}},
    Kind{kABRelatedNamesProperty, kABPartnerLabel, {Field::Partner}},
    Kind{kABRelatedNamesProperty, kABSpouseLabel, {Field::Spouse}},
    Kind{kABRelatedNamesProperty, kABAssistantLabel, {Field::Assistant}},
    Kind{kABRelatedNamesProperty, kABManagerLabel, {Field::Manager}},
    Kind{kABEmailProperty, kABEmailHomeLabel, {Field::HomeEmail}},
    Kind{kABEmailProperty, kABEmailWorkLabel, {Field::WorkEmail}},
    Kind{kABEmailProperty, kABOtherLabel, {Field::OtherEmail}},
};

/// The single values that a merge takes over; other text and date fields are left behind.
constexpr std::array kSingleFields{
    Field::FirstName,
    Field::LastName,
    Field::MaidenName,
    Field::MiddleName,
    Field::Company,
    Field::JobTitle,
    Field::Suffix,
    Field::Birthday,
    Field::PhoneticFirstName,
    Field::PhoneticLastName,
};

/// Texts, each once, in the order in which they were first added.
class TextSet
{
public:
    void add(const QString &text)
    {
        const qsizetype before = m_known.size();
        m_known.insert(text);
        if (m_known.size() > before)
            m_texts += text;
    }
    const QStringList &texts() const { return m_texts; }

private:
    QSet<QString> m_known;
    QStringList m_texts;
};

class Merge
{
public:
    void add(Field field, const FieldValue &value)
    {
        const FieldInfo &info = fieldInfo(field);
        switch (info.family) {
        case FieldFamily::Text:
        case FieldFamily::Date:
            addSingle(info, value);
            break;
        case FieldFamily::Labelled:
        case FieldFamily::RelatedName:
            addToSet(field, std::get<QString>(value));
            break;
        case FieldFamily::Address:
            if (info.part != kABAddressCountryCodeKey)
                m_addresses[groupIndex(info)].setValue(std::get<QString>(value), *info.part);
            break;
        case FieldFamily::SocialProfile:
            m_profiles.addValue(ABDictionary{{kABSocialProfileServiceKey, info.service},
                                    {kABSocialProfileUsernameKey, std::get<QString>(value)}},
                kABAddressHomeLabel);
            break;
        case FieldFamily::InstantMessage:
            m_accounts.addValue(ABDictionary{{kABInstantMessageServiceKey, info.service},
                                    {kABInstantMessageUsernameKey, std::get<QString>(value)}},
                info.storeLabel);
            break;
        case FieldFamily::FullName:
            break;
        }
    }

    PersonRecordPtr record()
    {
        m_record.setText(kABNoteProperty, m_note);
        if (m_profiles.count() > 0)
            m_record.setMultiValue(kABSocialProfileProperty, m_profiles);
        if (m_accounts.count() > 0)
            m_record.setMultiValue(kABInstantMessageProperty, m_accounts);
        for (const ABProperty property : {kABPhoneProperty, kABRelatedNamesProperty, kABEmailProperty})
            m_record.setMultiValue(property, valuesOf(property));
        ABMutableMultiValue addresses;
        for (std::size_t group = 0; group < m_addresses.size(); ++group)
            addresses.addValue(m_addresses[group], labelOfGroup(static_cast<FieldGroup>(group)));
        m_record.setMultiValue(kABAddressProperty, addresses);
        return std::make_shared<const PersonRecord>(m_record);
    }

private:
    static std::size_t groupIndex(const FieldInfo &info)
    {
        return static_cast<std::size_t>(groupOfLabel(info.storeLabel));
    }

    void addSingle(const FieldInfo &info, const FieldValue &value)
    {
        if (info.field == Field::Note)
            m_note += u'\n' % std::get<QString>(value);
        else if (std::ranges::find(kSingleFields, info.field) == kSingleFields.end())
            return;
        else if (const auto *date = std::get_if<QDate>(&value))
            m_record.setBirthday(*date);
        else
            m_record.setText(info.property, std::get<QString>(value));
    }

    void addToSet(Field field, const QString &text)
    {
        for (std::size_t kind = 0; kind < kKinds.size(); ++kind) {
            if (std::ranges::find(kKinds[kind].fields, field) != kKinds[kind].fields.end())
                m_sets[kind].add(text);
        }
    }

    ABMultiValue valuesOf(ABProperty property) const
    {
        ABMutableMultiValue values;
        for (std::size_t kind = 0; kind < kKinds.size(); ++kind) {
            if (kKinds[kind].property != property)
                continue;
            for (const QString &text : m_sets[kind].texts())
                values.addValue(text, kKinds[kind].label);
        }
        return values;
    }

    PersonRecord m_record;
    QString m_note = QStringLiteral("");
    std::array<ABDictionary, kFieldGroupCount> m_addresses;
    ABMutableMultiValue m_profiles;
    ABMutableMultiValue m_accounts;
    std::array<TextSet, kKinds.size()> m_sets;
};

void logFields(const std::vector<PersonDictionary> &dictionaries)
{
    if (!lcFix().isDebugEnabled())
        return;
    QStringList keys;
    QStringList values;
    for (const PersonDictionary &dictionary : dictionaries) {
        keys += QStringLiteral("Person");
        values += dictionary.person()->uniqueId();
        for (const auto &entry : dictionary.entries()) {
            keys += fieldInfo(entry.field()).label;
            values += dictionary.text(entry);
        }
    }
    qCDebug(lcFix, "所有的keys：%s", qUtf8Printable(keys.join(u',')));
    qCDebug(lcFix, "所对应的values%s", qUtf8Printable(values.join(u',')));
}

} // namespace

ABPersonPtr mergeContacts(const QList<ABPersonPtr> &people)
{
    std::vector<PersonDictionary> dictionaries;
    dictionaries.reserve(std::size_t(people.size()));
    for (const auto &person : people)
        dictionaries.push_back(prasePerson(person, DictionaryForm::Merge));
    logFields(dictionaries);
    Merge merge;
    for (const PersonDictionary &dictionary : dictionaries) {
        for (const auto &entry : dictionary.entries())
            merge.add(entry.field(), dictionary.value(entry));
    }
    auto merged = std::make_shared<ABPerson>();
    merged->replaceRecord(merge.record());
    return merged;
}

QList<ABPersonPtr> peopleNamedLike(const ABPerson &person)
{
    const auto book = ABAddressBook::sharedAddressBook();
    const QList<ABPersonPtr> namesakes =
        book ? book->peopleWithNameKey(nameKey(*person.record())) : QList<ABPersonPtr>();
    return namesakes.size() < 2 ? QList<ABPersonPtr>() : namesakes;
}

QList<ABPersonPtr> peopleToMerge(const Finding &finding)
{
    if (finding.condition != Condition::ShareEmail)
        return peopleNamedLike(*finding.person);
    QList<ABPersonPtr> people = finding.duplicateEmailArray;
    people += finding.person;
    // Merged or deleted before: another merge would bring the person back.
    return finding.person->isRemoved() ? QList<ABPersonPtr>() : people;
}

Result<void> mergeInto(ABAddressBook &book, const std::vector<StoredRecord> &people, PersonRecord result)
{
    std::vector<RecordChange> changes;
    for (const StoredRecord &person : people)
        changes.push_back({.uid = person.uid, .before = person.record, .after = nullptr});
    changes.front().after = std::make_shared<const PersonRecord>(std::move(result));
    const QString description = QStringLiteral("merge of %1 contacts").arg(people.size());
    return book.apply(std::move(changes), makeCause(ChangeCause::Kind::Repair, description));
}
