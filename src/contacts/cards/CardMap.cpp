// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/CardMap.h"

#include "contacts/cards/CardFields.h"

#include <unordered_map>

namespace {

bool passOver(CardDraft &, const CardLine &)
{
    return true;
}

constexpr auto kName = areaOf(kABFirstNameProperty);
constexpr auto kBirthday = areaOf(kABBirthdayProperty);
constexpr auto kFlags = areaOf(kABPersonFlags);
constexpr auto kRelations = areaOf(kABRelatedNamesProperty);
constexpr auto kAccounts = areaOf(kABInstantMessageProperty);
constexpr auto kProfiles = areaOf(kABSocialProfileProperty);

/// Labels and country codes are read with the value they belong to.
constexpr std::array kRows{
    CardRow{"BEGIN", CardArea::Begin, passOver},
    CardRow{"END", CardArea::End, passOver},
    CardRow{"VERSION", CardArea::Version, passOver},
    CardRow{"UID", areaOf(kABUIDProperty), readUid, writeUid},
    CardRow{"N", kName, readName, writeName},
    CardRow{"FN", CardArea::Display, readFormattedName, writeFormattedName},
    CardRow{"X-PHONETIC-FIRST-NAME", areaOf(kABFirstNamePhoneticProperty), readText, writeText},
    CardRow{"X-PHONETIC-LAST-NAME", areaOf(kABLastNamePhoneticProperty), readText, writeText},
    CardRow{"X-MAIDENNAME", areaOf(kABMaidenNameProperty), readText, writeText},
    CardRow{"NICKNAME", areaOf(kABNicknameProperty), readText, writeText},
    CardRow{"ORG", areaOf(kABOrganizationProperty), readOrganization, writeOrganization},
    CardRow{"TITLE", areaOf(kABJobTitleProperty), readText, writeText},
    CardRow{"NOTE", areaOf(kABNoteProperty), readNote, writeText},
    CardRow{"BDAY", kBirthday, readBirthday, writeBirthday, printBirthday},
    CardRow{"X-EVOLUTION-BIRTHDAY", kBirthday, readBirthday, nullptr, nullptr, true},
    CardRow{"X-ABShowAs", kFlags, readShowAs, writeShowAs},
    CardRow{"KIND,X-ADDRESSBOOKSERVER-KIND", kFlags, readKind},
    CardRow{"EMAIL", areaOf(kABEmailProperty), readEntry, writeList<writeEntry>, printLabelled},
    CardRow{"TEL", areaOf(kABPhoneProperty), readPhone, writeList<writeEntry>, printLabelled},
    CardRow{"URL", areaOf(kABURLsProperty), readEntry, writeList<writeEntry>},
    CardRow{"X-ABRELATEDNAMES", kRelations, readRelatedName, writeList<writeEntry>},
    CardRow{"RELATED", kRelations, readRelated},
    CardRow{"X-SPOUSE,X-MANAGER,X-ASSISTANT,X-EVOLUTION-SPOUSE,X-EVOLUTION-MANAGER,X-EVOLUTION-ASSISTANT", kRelations,
        readRelation},
    CardRow{"ADR", areaOf(kABAddressProperty), readAddress, writeList<writeAddress>, printLabelled},
    CardRow{"X-ABLabel", CardArea::Label, passOver},
    CardRow{"X-ABADR", CardArea::CountryCode, passOver},
    CardRow{"IMPP", kAccounts, readInstantMessage, writeList<writeAccount>},
    CardRow{"X-AIM,X-GADUGADU,X-GOOGLE-TALK,X-GTALK,X-ICQ,X-JABBER,X-MSN,X-QQ,X-SKYPE,X-SKYPE-USERNAME,X-YAHOO",
        kAccounts, readAccount},
    CardRow{"X-SOCIALPROFILE", kProfiles, readSocialProfile, writeList<writeProfile>},
    CardRow{"X-TWITTER", kProfiles, readTwitter},
    CardRow{"PHOTO", CardArea::Picture, readPhoto, writePhoto, printPhoto},
    CardRow{"X-PEOPLENOOK-EXACT", CardArea::Exact, readExact},
    CardRow{"AGENT", CardArea::Agent, nullptr},
    CardRow{"LABEL", CardArea::AddressLabel, nullptr},
    CardRow{"X-EVOLUTION-FILE-AS", CardArea::FiledAs, nullptr},
};

} // namespace

std::span<const CardRow> cardRows()
{
    return kRows;
}

const CardRow *cardRow(std::string_view name)
{
    struct Hash // names differ in length and at their ends
    {
        std::size_t operator()(std::string_view text) const
        {
            return text.empty() ? 0 : text.size() * 31 + std::size_t(upperAscii(text.back()));
        }
    };
    struct IsSame
    {
        bool operator()(std::string_view a, std::string_view b) const { return equalsIgnoringCase(a, b); }
    };
    static const auto rows = [] {
        std::unordered_map<std::string_view, const CardRow *, Hash, IsSame> byName;
        for (const CardRow &row : kRows) {
            std::string_view each;
            for (std::string_view names = row.name; takeWord(names, each);)
                byName.emplace(each, &row);
        }
        return byName;
    }();
    const auto found = rows.find(name);
    return found == rows.end() ? nullptr : found->second;
}

const CardRow *writtenRow(CardArea area)
{
    const auto *row =
        std::ranges::find_if(kRows, [area](const CardRow &each) { return each.area == area && each.write; });
    return row == kRows.end() ? nullptr : row;
}
