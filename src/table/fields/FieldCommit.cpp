// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/fields/FieldCommit.h"

#include "contacts/book/ChangeCause.h"
#include "contacts/model/ABLabels.h"
#include "contacts/model/NameTexts.h"
#include "table/fields/TableLog.h"

#include <QStringList>

#include <array>
#include <map>

Q_LOGGING_CATEGORY(lcTable, "peoplenook.table")
Q_LOGGING_CATEGORY(lcTableOut, "peoplenook.table.stdout")

namespace {

using Entries = std::span<const ABMultiValue::Entry>;

/// A multi-value as it is before the edit; the record keeps it alive.
struct OldValue
{
    PersonRecordPtr record;
    const ABMultiValue *value; ///< null where the property is absent

    OldValue(const ABPersonPtr &person, ABProperty property)
        : record(person->record()), value(record->multiValue(property))
    { }
    Entries entries() const { return value ? value->entries() : Entries(); }
};

const FieldInfo &infoOf(const QString &fieldLabel)
{
    const auto field = fieldLabelled(fieldLabel);
    Q_ASSERT(field);
    return fieldInfo(*field);
}

bool isLabelOfProperty(const QString &label, ABProperty property)
{
    return fieldWith(fieldsOfProperty(property), &FieldInfo::storeLabel, label) != nullptr;
}

/// E-mails, URLs and phones: one text a label.
ABMultiValue withLabelledText(const OldValue &old, const FieldInfo &field, const QString &value)
{
    ABMutableMultiValue edited;
    bool isSeen = false;
    for (const auto &entry : old.entries()) {
        const bool isTarget = entry.label == field.storeLabel;
        isSeen = isSeen || isTarget;
        if (isTarget)
            edited.addValue(value, field.storeLabel);
        else if (isLabelOfProperty(entry.label, field.property))
            edited.addValue(entry.value, entry.label);
    }
    // A list that is there but empty stays so.
    const bool isEmptyList = old.value && old.value->count() == 0;
    if (!isSeen && !isEmptyList)
        edited.addValue(value, field.storeLabel);
    return edited;
}

bool isServiceOfProperty(const QString &service, ABProperty property)
{
    return fieldWith(fieldsOfProperty(property), &FieldInfo::service, service) != nullptr;
}

/// A known service's word in diagnostic lines.
const char *wordOf(const QString &service)
{
    static const std::map<QString, const char *> words{{kABSocialProfileServiceTwitter, "twitter"},
        {kABSocialProfileServiceFacebook, "facebook"}, {kABSocialProfileServiceLinkedIn, "linkIn"},
        {kABSocialProfileServiceFlickr, "flickr"}, {kABSocialProfileServiceMySpace, "myspace"},
        {kABInstantMessageServiceAIM, "AIM"}, {kABInstantMessageServiceFacebook, "Facebook"},
        {kABInstantMessageServiceGaduGadu, "Gadu"}, {kABInstantMessageServiceGoogleTalk, "GoogleTalk"},
        {kABInstantMessageServiceICQ, "ICQ"}, {kABInstantMessageServiceJabber, "Jabber"},
        {kABInstantMessageServiceMSN, "MSN"}, {kABInstantMessageServiceQQ, "QQ"},
        {kABInstantMessageServiceSkype, "Skype"}, {kABInstantMessageServiceYahoo, "Yahoo"}};
    return words.at(service);
}

QString textOf(const ABDictionary &dictionary, ABKey key)
{
    const QString *text = dictionary.valueForKey(key);
    return text ? *text : QString();
}

/// A null @p user leaves the user name out.
ABDictionary account(ABKey serviceKey, const QString &service, ABKey userKey, const QString &user)
{
    ABDictionary made;
    made.setValue(service, serviceKey);
    if (!user.isNull())
        made.setValue(user, userKey);
    return made;
}

ABDictionary messagingAccount(const QString &service, const QString &user)
{
    return account(kABInstantMessageServiceKey, service, kABInstantMessageUsernameKey, user);
}

ABDictionary profile(const QString &service, const QString &user)
{
    return account(kABSocialProfileServiceKey, service, kABSocialProfileUsernameKey, user);
}

void copyParts(const ABDictionary &address, ABDictionary &into)
{
    for (const auto &[key, text] : address)
        into.setValue(text, key);
}

void copyAccount(const ABDictionary &from, ABMutableMultiValue &to, const QString &service, FieldGroup group)
{
    if (isServiceOfProperty(service, kABInstantMessageProperty))
        to.addValue(messagingAccount(service, textOf(from, kABInstantMessageUsernameKey)), labelOfGroup(group));
}

/// An edit's own line for an account of the edited group.
void logEditedGroup(FieldGroup group, const char *service)
{
    static constexpr std::array words{"Home", "work", "other"};
    qCDebug(lcTable, "exsit %s %s", words[static_cast<std::size_t>(group)], service);
}

bool isWritten(const FieldInfo &field)
{
    // The department is shown, but an edit of it does not reach the person.
    return field.family != FieldFamily::FullName && field.field != Field::Department;
}

/// Writes the field without saving.
bool writeField(const FieldInfo &field, const FieldValue &value, const ABPersonPtr &person, Error *error)
{
    if (field.family == FieldFamily::Date) {
        if (std::holds_alternative<std::monostate>(value))
            return person->removeValueForProperty(field.property);
        const auto *date = std::get_if<QDate>(&value);
        return date && person->setValue(*date, field.property, error);
    }
    const auto *found = std::get_if<QString>(&value);
    const QString text = found && !found->isNull() ? *found : QLatin1StringView("");
    switch (field.family) {
    case FieldFamily::Text:
        return person->setValue(text, field.property, error);
    case FieldFamily::Labelled:
        return person->setValue(withLabelledText(OldValue(person, field.property), field, text), field.property, error);
    case FieldFamily::Address:
        FieldCommit::commitAddress(field.label, text, person);
        return true;
    case FieldFamily::SocialProfile:
        FieldCommit::commitSocailProfile(field.label, text, person);
        return true;
    case FieldFamily::RelatedName:
        FieldCommit::commitRelateNames(field.label, text, person);
        return true;
    case FieldFamily::InstantMessage:
        FieldCommit::commitInstantMassage(field.label, text, person);
        return true;
    case FieldFamily::Date:
    case FieldFamily::FullName:
        break;
    }
    return true;
}

} // namespace

namespace FieldCommit {

Result<void> commitContactsToAddressBook(
    const QString &fieldLabel, const FieldValue &commitValue, const ABPersonPtr &withPerson)
{
    const auto cause = makeCause(ChangeCause::Kind::Edit, withReadableName(fieldLabel, *withPerson->record()));
    const auto book = ABAddressBook::sharedAddressBook();
    const auto field = fieldLabelled(fieldLabel);
    Error refused;
    bool isWrittenWell = true;
    if (book && !book->containsRecord(withPerson)) {
        const QString reason = withPerson->uniqueId() + QStringLiteral(": is in the address book no longer");
        qCDebug(lcTable).noquote() << QStringLiteral("保存出错原因: ") + reason;
        return Error{ErrorKind::NotFound, reason}; // adding it would bring back whom somebody else removed
    }
    if (field && isWritten(fieldInfo(*field)))
        isWrittenWell = writeField(fieldInfo(*field), commitValue, withPerson, &refused);

    Error error;
    if (!book || !book->addRecord(withPerson, &error)) {
        qCDebug(lcTable).noquote() << QStringLiteral("保存出错原因: ") + error.description();
        return error;
    }
    if (!book->save(&error, cause))
        return error;
    qCDebug(lcTableOut, "提交成功\n");
    return isWrittenWell ? Result<void>() : refused;
}

void commitAddress(const QString &fieldLabel, const QString &commitValue, const ABPersonPtr &withPerson)
{
    const FieldInfo &field = infoOf(fieldLabel);
    const OldValue old(withPerson, kABAddressProperty);
    static constexpr std::array copiers{copyHomeAddress, copyWorkAddress, copyOtherAddress};
    std::array<ABDictionary, kFieldGroupCount> addresses;
    for (const auto &entry : old.entries()) {
        const auto group = static_cast<std::size_t>(groupOfLabel(entry.label));
        copiers[group](entry.dictionary(), addresses[group]);
    }
    addresses[static_cast<std::size_t>(groupOfLabel(field.storeLabel))].setValue(commitValue, *field.part);

    ABMutableMultiValue edited;
    for (const FieldGroup group : {FieldGroup::Home, FieldGroup::Work, FieldGroup::Other})
        edited.addValue(addresses[static_cast<std::size_t>(group)], labelOfGroup(group));
    withPerson->setValue(edited, kABAddressProperty);
}

void copyHomeAddress(const ABDictionary &address, ABDictionary &toNewHomeDic)
{
    copyParts(address, toNewHomeDic);
}

void copyWorkAddress(const ABDictionary &address, ABDictionary &toNewWorkDic)
{
    copyParts(address, toNewWorkDic);
}

void copyOtherAddress(const ABDictionary &address, ABDictionary &toNewOtherDic)
{
    copyParts(address, toNewOtherDic);
}

void commitSocailProfile(const QString &fieldLabel, const QString &commitValue, const ABPersonPtr &withPerson)
{
    const QString &editedService = infoOf(fieldLabel).service;
    const OldValue old(withPerson, kABSocialProfileProperty);
    ABMutableMultiValue edited;
    QStringList seenServices;
    for (const auto &entry : old.entries()) {
        qCDebug(lcTable, "标签%s", entry.label.isNull() ? "(null)" : qUtf8Printable(entry.label));
        const QString text = textOf(entry.dictionary(), kABSocialProfileServiceKey);
        seenServices += text;
        if (!isServiceOfProperty(text, kABSocialProfileProperty))
            continue;
        qCDebug(lcTable, "exsit %s", wordOf(text));
        const QString user = textOf(entry.dictionary(), kABSocialProfileUsernameKey);
        if (user.isNull() && text != kABSocialProfileServiceTwitter)
            continue;
        edited.addValue(profile(text, text == editedService ? commitValue : user), kABHomeLabel);
    }
    if (!seenServices.contains(editedService))
        edited.addValue(profile(editedService, commitValue), kABHomeLabel);
    withPerson->removeValueForProperty(kABSocialProfileProperty);
    if (withPerson->setValue(edited, kABSocialProfileProperty))
        qCDebug(lcTable, "添加属性成功");
    else
        qCDebug(lcTable, "添加属性失败");
}

void commitRelateNames(const QString &fieldLabel, const QString &commitValue, const ABPersonPtr &withPerson)
{
    const QString &editedLabel = infoOf(fieldLabel).storeLabel;
    const OldValue old(withPerson, kABRelatedNamesProperty);
    ABMutableMultiValue edited;
    QStringList seenLabels;
    for (const auto &entry : old.entries()) {
        seenLabels += entry.label;
        if (entry.label == kABFatherLabel)
            qCDebug(lcTable, "exsit father name");
        if (entry.label == editedLabel)
            edited.addValue(commitValue, entry.label);
        else if (isLabelOfProperty(entry.label, kABRelatedNamesProperty))
            edited.addValue(entry.value, entry.label);
    }
    if (!seenLabels.contains(editedLabel))
        edited.addValue(commitValue, editedLabel);
    withPerson->setValue(edited, kABRelatedNamesProperty);
}

void commitInstantMassage(const QString &fieldLabel, const QString &commitValue, const ABPersonPtr &withPerson)
{
    const FieldInfo &field = infoOf(fieldLabel);
    const FieldGroup editedGroup = groupOfLabel(field.storeLabel);
    static constexpr std::array copiers{copyHomeIM, copyWorkIM, copyOtherIM};
    const OldValue old(withPerson, kABInstantMessageProperty);
    ABMutableMultiValue edited;
    QStringList seenServices;
    for (const auto &entry : old.entries()) {
        const QString text = textOf(entry.dictionary(), kABInstantMessageServiceKey);
        const FieldGroup group = groupOfLabel(entry.label);
        if (group != editedGroup) {
            copiers[static_cast<std::size_t>(group)](entry.dictionary(), edited, text);
            continue;
        }
        seenServices += text;
        if (!isServiceOfProperty(text, kABInstantMessageProperty))
            continue;
        logEditedGroup(group, wordOf(text));
        const QString user = textOf(entry.dictionary(), kABInstantMessageUsernameKey);
        edited.addValue(messagingAccount(text, text == field.service ? commitValue : user), field.storeLabel);
    }
    if (!seenServices.contains(field.service))
        edited.addValue(messagingAccount(field.service, commitValue), field.storeLabel);
    withPerson->removeValueForProperty(kABInstantMessageProperty);
    withPerson->setValue(edited, kABInstantMessageProperty);
}

void copyHomeIM(
    const ABDictionary &account, ABMutableMultiValue &toNewInstantMassageValue, const QString &withServiceKey)
{
    static const QStringList silent{kABInstantMessageServiceICQ, kABInstantMessageServiceJabber,
        kABInstantMessageServiceMSN, kABInstantMessageServiceQQ, kABInstantMessageServiceSkype,
        kABInstantMessageServiceYahoo};
    if (isServiceOfProperty(withServiceKey, kABInstantMessageProperty) && !silent.contains(withServiceKey))
        qCDebug(lcTable, "exsit home %s", wordOf(withServiceKey));
    copyAccount(account, toNewInstantMassageValue, withServiceKey, FieldGroup::Home);
}

void copyWorkIM(
    const ABDictionary &account, ABMutableMultiValue &toNewInstantMassageValue, const QString &withServiceKey)
{
    if (isServiceOfProperty(withServiceKey, kABInstantMessageProperty)) {
        const bool isCapital =
            withServiceKey == kABInstantMessageServiceAIM || withServiceKey == kABInstantMessageServiceFacebook;
        qCDebug(lcTable, "exsit %s %s", isCapital ? "Work" : "work", wordOf(withServiceKey));
    }
    copyAccount(account, toNewInstantMassageValue, withServiceKey, FieldGroup::Work);
}

void copyOtherIM(
    const ABDictionary &account, ABMutableMultiValue &toNewInstantMassageValue, const QString &withServiceKey)
{
    if (isServiceOfProperty(withServiceKey, kABInstantMessageProperty))
        qCDebug(lcTable, "exsit other %s", wordOf(withServiceKey));
    copyAccount(account, toNewInstantMassageValue, withServiceKey, FieldGroup::Other);
}

} // namespace FieldCommit
