// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/CardWords.h"

#include "contacts/cards/CardLine.h"
#include "contacts/cards/TextCoding.h"
#include "contacts/model/ABLabels.h"

namespace {

/// What some words stand for, in whatever case they are written.
template <typename Value> struct Word
{
    std::string_view word;
    Value value;
};

template <typename Value, std::size_t size>
Value valueOr(const std::array<Word<Value>, size> &words, std::string_view word, Value other)
{
    for (const auto &each : words) {
        if (equalsIgnoringCase(each.word, word))
            return each.value;
    }
    return other;
}

constexpr auto kTypes = std::to_array<Word<unsigned>>({
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

constexpr auto kParams = std::to_array<Word<unsigned>>({
    {"TYPE", CardParam::Type},
    {"ENCODING", CardParam::Encoding},
    {"CHARSET", CardParam::Charset},
    {"VALUE", CardParam::Value},
    {"X-SERVICE-TYPE", CardParam::ServiceType},
    {"X-GOOGLE-LABEL", CardParam::GoogleLabel},
    {"X-APPLE-OMIT-YEAR", CardParam::OmitYear},
});

/// In the order of precedence: a mobile phone at work is a mobile phone.
// No std::array: it would have to be told how many there are.
// NOLINTNEXTLINE(modernize-avoid-c-arrays)
const TypeLabel kTypeLabels[]{
    {CardType::IPhone, CardType::IPhone | CardType::Cell, true, kABPhoneiPhoneLabel},
    {CardType::Cell, CardType::Cell, true, kABPhoneMobileLabel},
    {CardType::Fax | CardType::Home, CardType::Fax | CardType::Home, true, kABPhoneHomeFAXLabel},
    {CardType::Fax, CardType::Fax | CardType::Work, true, kABPhoneWorkFAXLabel},
    {CardType::Pager, CardType::Pager, true, kABPhonePagerLabel},
    {CardType::Main, CardType::Main, true, kABPhoneMainLabel},
    {CardType::Home, CardType::Home, false, kABHomeLabel},
    {CardType::Work, CardType::Work, false, kABWorkLabel},
    {CardType::Others, CardType::Others, false, kABOtherLabel},
};

// Pointers, since the labels themselves are made only when the program starts.
constexpr auto kRelations = std::to_array<Word<const QString *>>({
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

constexpr auto kServices = std::to_array<CardService>({
    {&kABInstantMessageServiceAIM, "AIM", "aim", ""},
    {&kABInstantMessageServiceFacebook, "Facebook", "xmpp", ""},
    {&kABInstantMessageServiceGaduGadu, "GaduGadu", "gg", "GADU-GADU,GG"},
    {&kABInstantMessageServiceGoogleTalk, "GoogleTalk", "xmpp", "GOOGLE-TALK,GOOGLE TALK,GTALK"},
    {&kABInstantMessageServiceICQ, "ICQ", "icq", ""},
    {&kABInstantMessageServiceJabber, "Jabber", "xmpp", "XMPP"},
    {&kABInstantMessageServiceMSN, "MSN", "msnim", "MSNIM"},
    {&kABInstantMessageServiceQQ, "QQ", "qq", "X-QQ"},
    {&kABInstantMessageServiceSkype, "Skype", "skype", "SKYPE-USERNAME"},
    {&kABInstantMessageServiceYahoo, "Yahoo", "ymsgr", "YMSGR"},
});

constexpr auto kSocialServices = std::to_array<Word<const QString *>>({
    {"FACEBOOK", &kABSocialProfileServiceFacebook},
    {"FLICKR", &kABSocialProfileServiceFlickr},
    {"LINKEDIN", &kABSocialProfileServiceLinkedIn},
    {"MYSPACE", &kABSocialProfileServiceMySpace},
    {"TWITTER", &kABSocialProfileServiceTwitter},
});

} // namespace

unsigned typeBit(std::string_view word)
{
    return valueOr<unsigned>(kTypes, word, CardType::Unknown);
}

unsigned paramBit(std::string_view word)
{
    return word.empty() ? CardParam::Bare : valueOr<unsigned>(kParams, word, CardParam::Unknown);
}

const TypeLabel *labelOfTypes(ABProperty property, unsigned types)
{
    const auto *found = std::ranges::find_if(kTypeLabels, [&](const TypeLabel &row) {
        return (types & row.needed) == row.needed && (!row.ofPhonesOnly || property == kABPhoneProperty);
    });
    return found == std::end(kTypeLabels) ? nullptr : found;
}

std::string typesOfLabel(ABProperty property, const QString &label)
{
    const auto *found = std::ranges::find_if(kTypeLabels, [&](const TypeLabel &row) {
        return row.label == label && (!row.ofPhonesOnly || property == kABPhoneProperty)
            && property != kABRelatedNamesProperty; // a relation is not at a place
    });
    std::string words;
    for (const auto &[word, bit] : kTypes) {
        if (found != std::end(kTypeLabels) && (found->written & bit) != 0)
            words.append(words.empty() ? "" : ",").append(word);
    }
    return words;
}

unsigned assumedTypes(ABProperty property)
{
    return property == kABPhoneProperty ? CardType::Voice : property == kABEmailProperty ? CardType::Internet : 0U;
}

const QString *relationLabel(std::string_view word)
{
    return valueOr<const QString *>(kRelations, word, nullptr);
}

const CardService *serviceOfWord(std::string_view word)
{
    const auto *found = std::ranges::find_if(kServices, [word](const CardService &row) {
        if (equalsIgnoringCase(row.word, word))
            return true;
        std::string_view other;
        for (std::string_view others = row.otherWords; takeWord(others, other);) {
            if (equalsIgnoringCase(other, word))
                return true;
        }
        return false;
    });
    return found == kServices.end() ? nullptr : found;
}

const CardService *serviceOfText(const QString &service)
{
    const auto *found =
        std::ranges::find_if(kServices, [&](const CardService &row) { return *row.service == service; });
    return found == kServices.end() ? nullptr : found;
}

bool isFreeWord(std::string_view word)
{
    return typeBit(word) == CardType::Unknown && !equalsIgnoringCase(word, "PREF");
}

const QString *socialService(std::string_view word)
{
    return valueOr<const QString *>(kSocialServices, word, nullptr);
}
