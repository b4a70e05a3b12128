// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/fields/Fields.h"

#include "contacts/model/ABLabels.h"

#include <QHash>

#include <algorithm>
#include <array>
#include <vector>

namespace {

struct Row
{
    const char *label;
    const QString &storeLabel;
};

struct TextRow
{
    const char *label;
    ABProperty property;
};

constexpr auto kTextRows = std::to_array<TextRow>({
    {"First Name", kABFirstNameProperty},
    {"Last Name", kABLastNameProperty},
    {"Phonetic First Name", kABFirstNamePhoneticProperty},
    {"Phonetic Last Name", kABLastNamePhoneticProperty},
    {"Department", kABDepartmentProperty},
    {"Note", kABNoteProperty},
    {"Suffix", kABSuffixProperty},
    {"Preffix", kABTitleProperty},
    {"Job Title", kABJobTitleProperty},
    {"Birthday", kABBirthdayProperty},
    {"Nickname", kABNicknameProperty},
    {"Maiden Name", kABMaidenNameProperty},
    {"Middle Name", kABMiddleNameProperty},
    {"Company", kABOrganizationProperty},
});

constexpr std::array kGroupWords{"Home", "Work", "Other"};

constexpr auto kAddressParts = std::to_array<std::pair<const char *, ABKey>>({
    {"Street", kABAddressStreetKey},
    {"City", kABAddressCityKey},
    {"State", kABAddressStateKey},
    {"ZIP", kABAddressZIPKey},
    {"Country", kABAddressCountryKey},
    {"Country Code", kABAddressCountryCodeKey},
});

/// Builds the rows in the order of Field, which it relies on.
class FieldTable
{
public:
    FieldTable()
    {
        m_rows.reserve(kFieldCount);
        for (const auto &[label, property] : kTextRows) {
            const bool isDate = propertyInfo(property).kind == ABPropertyKind::Date;
            add(label, isDate ? FieldFamily::Date : FieldFamily::Text, property);
        }
        add("FullName", FieldFamily::FullName, kABFirstNameProperty);
        addLabelled(FieldFamily::Labelled, kABEmailProperty,
            {{"Home Email", kABHomeLabel}, {"Work Email", kABWorkLabel}, {"Other Email", kABOtherLabel}});
        addLabelled(FieldFamily::Labelled, kABURLsProperty,
            {{"Home URL", kABHomeLabel}, {"Work URL", kABWorkLabel}, {"Home Page", kABHomePageLabel}});
        addLabelled(FieldFamily::Labelled, kABPhoneProperty,
            {{"Mobile", kABPhoneMobileLabel}, {"iPhone", kABPhoneiPhoneLabel}, {"Main Phone", kABPhoneMainLabel},
                {"Home Fax", kABPhoneHomeFAXLabel}, {"Work Fax", kABPhoneWorkFAXLabel}, {"Pager", kABPhonePagerLabel},
                {"Work Phone", kABPhoneWorkLabel}, {"Home Phone", kABPhoneHomeLabel}});
        for (int group = 0; group < kFieldGroupCount; ++group) {
            for (const auto &[word, part] : kAddressParts)
                add(group, word, FieldFamily::Address, kABAddressProperty).part = part;
        }
        addLabelled(FieldFamily::RelatedName, kABRelatedNamesProperty,
            {{"Father", kABFatherLabel}, {"Mother", kABMotherLabel}, {"Parent", kABParentLabel},
                {"Brother", kABBrotherLabel}, {"Sister", kABSisterLabel}, {"Child", kABChildLabel},
                {"Friend", kABFriendLabel}, {"Spouse", kABSpouseLabel}, {"Partner", kABPartnerLabel},
                {"Assistant", kABAssistantLabel}, {"Manager", kABManagerLabel}});
        addProfiles({{"Twitter", kABSocialProfileServiceTwitter}, {"Facebook", kABSocialProfileServiceFacebook},
            {"Myspace", kABSocialProfileServiceMySpace}, {"Flickr", kABSocialProfileServiceFlickr},
            {"LinkedIn", kABSocialProfileServiceLinkedIn}});
        addAccounts({{"AIM", kABInstantMessageServiceAIM}, {"QQ", kABInstantMessageServiceQQ},
            {"Google Talk", kABInstantMessageServiceGoogleTalk}, {"Gadu-Gadu", kABInstantMessageServiceGaduGadu},
            {"Jabber", kABInstantMessageServiceJabber}, {"MSN", kABInstantMessageServiceMSN},
            {"Facebook", kABInstantMessageServiceFacebook}, {"Skype", kABInstantMessageServiceSkype},
            {"Yahoo", kABInstantMessageServiceYahoo}, {"ICQ", kABInstantMessageServiceICQ}});
        Q_ASSERT(m_rows.size() == kFieldCount);
        for (const auto &row : m_rows)
            m_byLabel.insert(row.label, row.field);
        const auto propertyOf = [](const FieldInfo &row) { return static_cast<std::size_t>(row.property); };
        for (auto first = m_rows.cbegin(); first != m_rows.cend();) {
            const auto last = std::ranges::find_if(
                first, m_rows.cend(), [&](const FieldInfo &row) { return row.property != first->property; });
            if (m_byProperty[propertyOf(*first)].empty()) // the full name follows under the first name's property
                m_byProperty[propertyOf(*first)] = {first, last};
            first = last;
        }
    }

    std::span<const FieldInfo> rows() const { return m_rows; }
    const QHash<QString, Field> &byLabel() const { return m_byLabel; }
    std::span<const FieldInfo> byProperty(ABProperty property) const
    {
        return m_byProperty[static_cast<std::size_t>(property)];
    }

private:
    FieldInfo &add(const QString &label, FieldFamily family, ABProperty property)
    {
        const auto field = static_cast<Field>(m_rows.size());
        return m_rows.emplace_back(FieldInfo{field, family, property, label, {}, {}, {}});
    }
    FieldInfo &add(const char *label, FieldFamily family, ABProperty property)
    {
        return add(QString::fromLatin1(label), family, property);
    }
    FieldInfo &add(int group, const char *word, FieldFamily family, ABProperty property)
    {
        FieldInfo &row = add(QString::fromLatin1(kGroupWords[static_cast<std::size_t>(group)]) + QLatin1Char(' ')
                + QLatin1StringView(word),
            family, property);
        row.storeLabel = labelOfGroup(static_cast<FieldGroup>(group));
        return row;
    }
    void addLabelled(FieldFamily family, ABProperty property, std::initializer_list<Row> rows)
    {
        for (const auto &[label, storeLabel] : rows)
            add(label, family, property).storeLabel = storeLabel;
    }
    void addProfiles(std::initializer_list<Row> services)
    {
        for (const auto &[label, service] : services) {
            FieldInfo &row = add(label, FieldFamily::SocialProfile, kABSocialProfileProperty);
            row.storeLabel = kABHomeLabel;
            row.service = service;
        }
    }
    void addAccounts(std::initializer_list<Row> services)
    {
        for (int group = 0; group < kFieldGroupCount; ++group) {
            for (const auto &[word, service] : services)
                add(group, word, FieldFamily::InstantMessage, kABInstantMessageProperty).service = service;
        }
    }

    std::vector<FieldInfo> m_rows;
    QHash<QString, Field> m_byLabel;
    std::array<std::span<const FieldInfo>, static_cast<std::size_t>(kABUIDProperty) + 1> m_byProperty{};
};

const FieldTable &fieldTable()
{
    static const FieldTable table;
    return table;
}

} // namespace

std::span<const FieldInfo> allFields()
{
    return fieldTable().rows();
}

const FieldInfo &fieldInfo(Field field)
{
    return fieldTable().rows()[static_cast<std::size_t>(field)];
}

std::span<const FieldInfo> fieldsOfProperty(ABProperty property)
{
    return fieldTable().byProperty(property);
}

std::optional<Field> fieldLabelled(QStringView label)
{
    const auto &fields = fieldTable().byLabel();
    const auto found = fields.find(label.toString());
    return found == fields.end() ? std::nullopt : std::optional(*found);
}

const FieldInfo *fieldWith(std::span<const FieldInfo> fields, QString FieldInfo::*column, const QString &text)
{
    const auto found = std::ranges::find(fields, text, column);
    return found == fields.end() ? nullptr : &*found;
}

FieldGroup groupOfLabel(const QString &storeLabel)
{
    if (storeLabel == kABHomeLabel)
        return FieldGroup::Home;
    return storeLabel == kABWorkLabel ? FieldGroup::Work : FieldGroup::Other;
}

const QString &labelOfGroup(FieldGroup group)
{
    static const std::array<QString, kFieldGroupCount> labels{kABHomeLabel, kABWorkLabel, kABOtherLabel};
    return labels[static_cast<std::size_t>(group)];
}

std::span<const FieldInfo> fieldsOfGroup(ABProperty property, FieldGroup group)
{
    const auto fields = fieldsOfProperty(property);
    const std::size_t count = fields.size() / kFieldGroupCount;
    return fields.subspan(count * static_cast<std::size_t>(group), count);
}
