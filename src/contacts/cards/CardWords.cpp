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

constexpr std::array kTypes{
    Word<quint16>{"HOME", CardType::Home},
    Word<quint16>{"WORK", CardType::Work},
    Word<quint16>{"CELL", CardType::Cell},
    Word<quint16>{"IPHONE", CardType::IPhone},
    Word<quint16>{"MAIN", CardType::Main},
    Word<quint16>{"FAX", CardType::Fax},
    Word<quint16>{"PAGER", CardType::Pager},
    Word<quint16>{"OTHER", CardType::Others},
    Word<quint16>{"VOICE", CardType::Voice},
    Word<quint16>{"INTERNET", CardType::Internet},
};

constexpr std::array kParams{
    Word<quint16>{"TYPE", CardParam::Type},
    Word<quint16>{"ENCODING", CardParam::Encoding},
    Word<quint16>{"CHARSET", CardParam::Charset},
    Word<quint16>{"VALUE", CardParam::Value},
    Word<quint16>{"X-SERVICE-TYPE", CardParam::ServiceType},
    Word<quint16>{"X-USER", CardParam::User},
    Word<quint16>{"X-GOOGLE-LABEL", CardParam::GoogleLabel},
    Word<quint16>{"X-APPLE-OMIT-YEAR", CardParam::OmitYear},
};

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
constexpr std::array kRelations{
    Word<const QString *>{"SPOUSE", &kABSpouseLabel},
    Word<const QString *>{"CHILD", &kABChildLabel},
    Word<const QString *>{"PARENT", &kABParentLabel},
    Word<const QString *>{"FRIEND", &kABFriendLabel},
    Word<const QString *>{"FATHER", &kABFatherLabel},
    Word<const QString *>{"MOTHER", &kABMotherLabel},
    Word<const QString *>{"BROTHER", &kABBrotherLabel},
    Word<const QString *>{"SISTER", &kABSisterLabel},
    Word<const QString *>{"PARTNER", &kABPartnerLabel},
    Word<const QString *>{"ASSISTANT", &kABAssistantLabel},
    Word<const QString *>{"MANAGER", &kABManagerLabel},
};

constexpr std::array kServices{
    CardService{&kABInstantMessageServiceAIM, QLatin1StringView("AIM"), QLatin1StringView("aim"), ""},
    CardService{&kABInstantMessageServiceFacebook, QLatin1StringView("Facebook"), QLatin1StringView("xmpp"), ""},
    CardService{
        &kABInstantMessageServiceGaduGadu, QLatin1StringView("GaduGadu"), QLatin1StringView("gg"), "GADU-GADU,GG"},
    CardService{&kABInstantMessageServiceGoogleTalk, QLatin1StringView("GoogleTalk"), QLatin1StringView("xmpp"),
        "GOOGLE-TALK,GOOGLE TALK,GTALK"},
    CardService{&kABInstantMessageServiceICQ, QLatin1StringView("ICQ"), QLatin1StringView("icq"), ""},
    CardService{&kABInstantMessageServiceJabber, QLatin1StringView("Jabber"), QLatin1StringView("xmpp"), "XMPP"},
    CardService{&kABInstantMessageServiceMSN, QLatin1StringView("MSN"), QLatin1StringView("msnim"), "MSNIM"},
    CardService{&kABInstantMessageServiceQQ, QLatin1StringView("QQ"), QLatin1StringView("qq"), "X-QQ"},
    CardService{
        &kABInstantMessageServiceSkype, QLatin1StringView("Skype"), QLatin1StringView("skype"), "SKYPE-USERNAME"},
    CardService{&kABInstantMessageServiceYahoo, QLatin1StringView("Yahoo"), QLatin1StringView("ymsgr"), "YMSGR"},
};

constexpr std::array kSocialServices{
    Word<const QString *>{"FACEBOOK", &kABSocialProfileServiceFacebook},
    Word<const QString *>{"FLICKR", &kABSocialProfileServiceFlickr},
    Word<const QString *>{"LINKEDIN", &kABSocialProfileServiceLinkedIn},
    Word<const QString *>{"MYSPACE", &kABSocialProfileServiceMySpace},
    Word<const QString *>{"TWITTER", &kABSocialProfileServiceTwitter},
};

} // namespace

quint16 typeBit(std::string_view word)
{
    return valueOr(kTypes, word, CardType::Unknown);
}

quint16 paramBit(std::string_view word)
{
    return valueOr(kParams, word, CardParam::Unknown);
}

const QString *labelOfTypes(ABProperty property, quint16 types, quint16 &plainTypes)
{
    for (const TypeLabel &row : kTypeLabels) {
        if ((types & row.needed) != row.needed || (row.ofPhonesOnly && property != kABPhoneProperty))
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
        return row.label == label && (!row.ofPhonesOnly || property == kABPhoneProperty)
            && property != kABRelatedNamesProperty; // a relation is not at a place
    });
    return found == std::end(kTypeLabels) ? QLatin1StringView() : found->words;
}

quint16 assumedTypes(ABProperty property)
{
    return property == kABPhoneProperty ? CardType::Voice
        : property == kABEmailProperty  ? CardType::Internet
                                        : quint16(0);
}

const QString *relationLabel(std::string_view word)
{
    return valueOr<const QString *>(kRelations, word, nullptr);
}

const CardService *serviceOfWord(std::string_view word)
{
    const auto *found = std::ranges::find_if(kServices, [word](const CardService &row) {
        if (equalsIgnoringCase(row.word.data(), word))
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

bool isNetworkWord(std::string_view word)
{
    return typeBit(word) == CardType::Unknown && !equalsIgnoringCase(word, "PREF");
}

const QString *socialService(std::string_view word)
{
    return valueOr<const QString *>(kSocialServices, word, nullptr);
}
