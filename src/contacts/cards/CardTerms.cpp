// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/CardTerms.h"

#include "contacts/cards/WordTable.h"
#include "contacts/model/ABLabels.h"

namespace {

template <typename Value, std::size_t size>
consteval auto wordTable(const WordRow<Value> (&rows)[size]) // NOLINT(modernize-avoid-c-arrays)
{
    return WordTable<Value, size>(std::to_array(rows));
}

constexpr auto kNames = wordTable<CardName>({
    {"BEGIN", CardName::Begin},
    {"END", CardName::End},
    {"VERSION", CardName::Version},
    {"AGENT", CardName::Agent},
    {"N", CardName::Name},
    {"FN", CardName::FormattedName},
    {"ORG", CardName::Organization},
    {"TITLE", CardName::Text},
    {"NICKNAME", CardName::Text},
    {"NOTE", CardName::Text},
    {"X-PHONETIC-FIRST-NAME", CardName::Text},
    {"X-PHONETIC-LAST-NAME", CardName::Text},
    {"X-MAIDENNAME", CardName::Text},
    {"BDAY", CardName::Birthday},
    {"X-EVOLUTION-BIRTHDAY", CardName::OtherBirthday},
    {"UID", CardName::Uid},
    {"X-ABSHOWAS", CardName::ShowAs},
    {"KIND", CardName::Kind},
    {"X-ADDRESSBOOKSERVER-KIND", CardName::Kind},
    {"EMAIL", CardName::Email},
    {"TEL", CardName::Phone},
    {"URL", CardName::Url},
    {"ADR", CardName::Address},
    {"X-ABADR", CardName::CountryCode},
    {"X-ABLABEL", CardName::Label},
    {"X-ABRELATEDNAMES", CardName::RelatedName},
    {"RELATED", CardName::Related},
    {"X-SPOUSE", CardName::Relation},
    {"X-MANAGER", CardName::Relation},
    {"X-ASSISTANT", CardName::Relation},
    {"X-EVOLUTION-SPOUSE", CardName::Relation},
    {"X-EVOLUTION-MANAGER", CardName::Relation},
    {"X-EVOLUTION-ASSISTANT", CardName::Relation},
    {"IMPP", CardName::InstantMessage},
    {"X-AIM", CardName::Account},
    {"X-GADUGADU", CardName::Account},
    {"X-GOOGLE-TALK", CardName::Account},
    {"X-GTALK", CardName::Account},
    {"X-ICQ", CardName::Account},
    {"X-JABBER", CardName::Account},
    {"X-MSN", CardName::Account},
    {"X-QQ", CardName::Account},
    {"X-SKYPE", CardName::Account},
    {"X-SKYPE-USERNAME", CardName::Account},
    {"X-YAHOO", CardName::Account},
    {"X-SOCIALPROFILE", CardName::SocialProfile},
    {"X-TWITTER", CardName::Twitter},
    {"PHOTO", CardName::Photo},
    {"X-PEOPLENOOK-EXACT", CardName::Exact},
});

constexpr auto kTextProperties = wordTable<ABProperty>({
    {"TITLE", ABProperty::JobTitle},
    {"NICKNAME", ABProperty::Nickname},
    {"NOTE", ABProperty::Note},
    {"X-PHONETIC-FIRST-NAME", ABProperty::PhoneticFirstName},
    {"X-PHONETIC-LAST-NAME", ABProperty::PhoneticLastName},
    {"X-MAIDENNAME", ABProperty::MaidenName},
});

constexpr auto kTypes = wordTable<quint16>({
    {"HOME", CardType::Home},
    {"WORK", CardType::Work},
    {"CELL", CardType::Cell},
    {"IPHONE", CardType::IPhone},
    {"MAIN", CardType::Main},
    {"FAX", CardType::Fax},
    {"PAGER", CardType::Pager},
    {"OTHER", CardType::Others},
    {"VOICE", CardType::Voice},
    {"INTERNET", CardType::Internet},
});

constexpr auto kParams = wordTable<quint16>({
    {"TYPE", CardParam::Type},
    {"ENCODING", CardParam::Encoding},
    {"CHARSET", CardParam::Charset},
    {"VALUE", CardParam::Value},
    {"X-SERVICE-TYPE", CardParam::ServiceType},
    {"X-USER", CardParam::User},
    {"X-GOOGLE-LABEL", CardParam::GoogleLabel},
    {"X-APPLE-OMIT-YEAR", CardParam::OmitYear},
});

/// A label, the TYPE words that must all be there for it, and those that it is written with.
struct TypeLabel
{
    quint16 needed;
    quint16 written;
    bool ofPhonesOnly;
    const QString &label;
    QLatin1StringView words;
};

/// In the order of precedence: a mobile phone at work is a mobile phone.
// No std::array: it would have to be told how many there are.
// NOLINTNEXTLINE(modernize-avoid-c-arrays)
const TypeLabel kTypeLabels[]{
    {CardType::IPhone, CardType::IPhone | CardType::Cell, true, kABPhoneiPhoneLabel, QLatin1StringView("CELL,IPHONE")},
    {CardType::Cell, CardType::Cell, true, kABPhoneMobileLabel, QLatin1StringView("CELL")},
    {CardType::Fax | CardType::Home, CardType::Fax | CardType::Home, true, kABPhoneHomeFAXLabel,
        QLatin1StringView("HOME,FAX")},
    {CardType::Fax, CardType::Fax | CardType::Work, true, kABPhoneWorkFAXLabel, QLatin1StringView("WORK,FAX")},
    {CardType::Pager, CardType::Pager, true, kABPhonePagerLabel, QLatin1StringView("PAGER")},
    {CardType::Main, CardType::Main, true, kABPhoneMainLabel, QLatin1StringView("MAIN")},
    {CardType::Home, CardType::Home, false, kABHomeLabel, QLatin1StringView("HOME")},
    {CardType::Work, CardType::Work, false, kABWorkLabel, QLatin1StringView("WORK")},
    {CardType::Others, CardType::Others, false, kABOtherLabel, QLatin1StringView("OTHER")},
};

// Pointers, since the labels themselves are made only when the program starts.
constexpr auto kRelations = wordTable<const QString *>({
    {"SPOUSE", &kABSpouseLabel},
    {"CHILD", &kABChildLabel},
    {"PARENT", &kABParentLabel},
    {"FRIEND", &kABFriendLabel},
    {"FATHER", &kABFatherLabel},
    {"MOTHER", &kABMotherLabel},
    {"BROTHER", &kABBrotherLabel},
    {"SISTER", &kABSisterLabel},
    {"PARTNER", &kABPartnerLabel},
    {"ASSISTANT", &kABAssistantLabel},
    {"MANAGER", &kABManagerLabel},
});

constexpr std::array kServices{
    CardService{&kABInstantMessageServiceAIM, QLatin1StringView("AIM"), QLatin1StringView("aim")},
    CardService{&kABInstantMessageServiceFacebook, QLatin1StringView("Facebook"), QLatin1StringView("xmpp")},
    CardService{&kABInstantMessageServiceGaduGadu, QLatin1StringView("GaduGadu"), QLatin1StringView("gg")},
    CardService{&kABInstantMessageServiceGoogleTalk, QLatin1StringView("GoogleTalk"), QLatin1StringView("xmpp")},
    CardService{&kABInstantMessageServiceICQ, QLatin1StringView("ICQ"), QLatin1StringView("icq")},
    CardService{&kABInstantMessageServiceJabber, QLatin1StringView("Jabber"), QLatin1StringView("xmpp")},
    CardService{&kABInstantMessageServiceMSN, QLatin1StringView("MSN"), QLatin1StringView("msnim")},
    CardService{&kABInstantMessageServiceQQ, QLatin1StringView("QQ"), QLatin1StringView("qq")},
    CardService{&kABInstantMessageServiceSkype, QLatin1StringView("Skype"), QLatin1StringView("skype")},
    CardService{&kABInstantMessageServiceYahoo, QLatin1StringView("Yahoo"), QLatin1StringView("ymsgr")},
};

constexpr auto kServiceWords = wordTable<const CardService *>({
    {"AIM", &kServices[0]},
    {"FACEBOOK", &kServices[1]},
    {"GADUGADU", &kServices[2]},
    {"GADU-GADU", &kServices[2]},
    {"GG", &kServices[2]},
    {"GOOGLETALK", &kServices[3]},
    {"GOOGLE-TALK", &kServices[3]},
    {"GOOGLE TALK", &kServices[3]},
    {"GTALK", &kServices[3]},
    {"ICQ", &kServices[4]},
    {"JABBER", &kServices[5]},
    {"XMPP", &kServices[5]},
    {"MSN", &kServices[6]},
    {"MSNIM", &kServices[6]},
    {"QQ", &kServices[7]},
    {"X-QQ", &kServices[7]},
    {"SKYPE", &kServices[8]},
    {"SKYPE-USERNAME", &kServices[8]},
    {"YAHOO", &kServices[9]},
    {"YMSGR", &kServices[9]},
});

constexpr auto kSocialServices = wordTable<const QString *>({
    {"FACEBOOK", &kABSocialProfileServiceFacebook},
    {"FLICKR", &kABSocialProfileServiceFlickr},
    {"LINKEDIN", &kABSocialProfileServiceLinkedIn},
    {"MYSPACE", &kABSocialProfileServiceMySpace},
    {"TWITTER", &kABSocialProfileServiceTwitter},
});

template <typename Table> auto foundOr(const Table &table, std::string_view word, decltype(table.rows()[0].value) other)
{
    const auto *found = table.find(word);
    return found ? *found : other;
}

} // namespace

CardName cardName(std::string_view word)
{
    return foundOr(kNames, word, CardName::Other);
}

ABProperty textProperty(std::string_view name)
{
    return foundOr(kTextProperties, name, ABProperty::Note);
}

quint16 typeBit(std::string_view word)
{
    return foundOr(kTypes, word, CardType::Unknown);
}

quint16 paramBit(std::string_view word)
{
    return foundOr(kParams, word, CardParam::Unknown);
}

const QString *labelOfTypes(ABProperty property, quint16 types, quint16 &plainTypes)
{
    for (const TypeLabel &row : kTypeLabels) {
        if ((types & row.needed) != row.needed || (row.ofPhonesOnly && property != ABProperty::Phone))
            continue;
        plainTypes = row.written;
        return &row.label;
    }
    plainTypes = 0;
    return nullptr;
}

QLatin1StringView typesOfLabel(ABProperty property, const QString &label)
{
    const auto *found = std::ranges::find_if(kTypeLabels, [&](const TypeLabel &row) {
        return row.label == label && (!row.ofPhonesOnly || property == ABProperty::Phone)
            && property != ABProperty::RelatedNames; // a relation is not at a place
    });
    return found == std::end(kTypeLabels) ? QLatin1StringView() : found->words;
}

quint16 assumedTypes(ABProperty property)
{
    return property == ABProperty::Phone ? CardType::Voice
        : property == ABProperty::Email  ? CardType::Internet
                                         : quint16(0);
}

const QString *relationLabel(std::string_view word)
{
    return foundOr(kRelations, word, nullptr);
}

const CardService *serviceOfWord(std::string_view word)
{
    return foundOr(kServiceWords, word, nullptr);
}

const CardService *serviceOfText(const QString &service)
{
    const auto *found =
        std::ranges::find_if(kServices, [&](const CardService &row) { return *row.service == service; });
    return found == kServices.end() ? nullptr : found;
}

bool isNetworkWord(std::string_view word)
{
    return typeBit(word) == CardType::Unknown && !equalsIgnoringCase(word, "PREF");
}

const QString *socialService(std::string_view word)
{
    return foundOr(kSocialServices, word, nullptr);
}
