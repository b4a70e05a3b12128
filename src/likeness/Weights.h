// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>

/// In what two contacts can agree or disagree.
// clang-format off
enum class Sign : quint8 {
    GivenSame, GivenNickname, GivenMistyped, GivenInitial, GivenSecond, GivenUnlike, GivenDiffers,
    FamilySame, FamilyMistyped, FamilyDiffers, FamilyMissing, NamesWrittenDifferently, NamesSwapped,
    MiddleSame, MiddleDiffers, SuffixSame, SuffixOnOne, SuffixDiffers,
    BirthdaySame, BirthdayOfOtherName, BirthdayWithoutYear, BirthdayMistyped, BirthdayDecadesApart, BirthdayDiffers,
    PersonalPhoneSame, PhoneSame, SharedPhoneSame, PhonesDiffer, DesksDiffer,
    EmailSame, OfficeEmailSame, EmailsDiffer, AccountSame, PictureSame,
    AddressSame, AddressNear, StreetSame, CityDiffers, AddressesDiffer, StreetDiffers, TownSame,
    CompanySame, CompaniesDiffer, CompanyNameSame, CompanyNameMistyped, CompanyNameDiffers, CompanyAndPerson,
};
// clang-format on

/// By the theory of record linkage (Fellegi and Sunter) a sign weighs log2 of how much more often one finds it between
/// two contacts of one person than between two people. "Two people" are of two kinds, weighed apart: strangers, who
/// have something in common by chance, and those who are close, a family or colleagues, who share address, landline
/// and last name for good reason. Both have to be ruled out.
struct SignWeight
{
    Sign sign;
    double stranger;
    double close;
    double spoiled; ///< instead of both in a book whose texts are often wrong; 0: no other
    const char *says; ///< empty: nothing to tell the user
};

// clang-format off
inline constexpr auto kSignWeights = std::to_array<SignWeight>({
    // Among strangers equal names weigh by how rare the book has them; that is added in Evidence.cpp. In a family
    // few are called alike: fathers and sons, some colleagues.
    {Sign::GivenSame, 0, 5, 0, "same first name"},
    {Sign::GivenNickname, -1, 3, 0, "same first name, written differently"},
    {Sign::GivenMistyped, -2, 3, 0, "similar first name"},
    {Sign::GivenInitial, 0, 3, 0, "same initial"},
    {Sign::GivenSecond, 0, -4, 0, "first name of one is a second name of the other"}, // parents' names are passed on
    {Sign::GivenUnlike, -6, -6, -2, ""}, // there are more pet names than any table has
    {Sign::GivenDiffers, -8, -8, -2, ""}, // both are well known
    {Sign::FamilySame, 0, 0, 0, "same last name"},
    {Sign::FamilyMistyped, -2, -1, 0, "similar last name"},
    {Sign::FamilyDiffers, -7, -7, -2, ""}, // people marry, but colleagues have equal first names
    {Sign::FamilyMissing, 0, -2, 0, ""}, // first names are common among colleagues
    {Sign::NamesWrittenDifferently, 0, 0, 0, ""},
    {Sign::NamesSwapped, -1, -1, 0, ""}, // James Robert and Robert James may be two
    {Sign::MiddleSame, 2, 1, 0, ""},
    {Sign::MiddleDiffers, -4, -7, 0, ""},
    {Sign::SuffixSame, 2, 2, 0, ""},
    {Sign::SuffixOnOne, 0, -6, 0, ""}, // perhaps only the son has one; often neither has
    {Sign::SuffixDiffers, -14, -14, 0, ""}, // father and son

    // 365 days of some 60 years. Twins aside, a family does not share a day; and twins have different names.
    {Sign::BirthdaySame, 14, 8, 0, "same birthday"},
    {Sign::BirthdayOfOtherName, 14, 1, 0, "same birthday"},
    {Sign::BirthdayWithoutYear, 8, 4, 0, "same birthday"},
    {Sign::BirthdayMistyped, 2, 1, 4, "similar birthday"},
    {Sign::BirthdayDecadesApart, 0, -5, 4, "similar birthday"}, // a slip in the year, or a father and his son
    {Sign::BirthdayDiffers, -14, -14, -2, ""}, // father and son, as a suffix

    // Strangers never share a number or an address. How often people who are close do is in the close column, and a
    // value that several people of the book have weighs less, by kBitsPerSharing.
    {Sign::PersonalPhoneSame, 30, 6, 0, "same phone number"},
    {Sign::PhoneSame, 30, 3, 0, "same phone number"},
    {Sign::SharedPhoneSame, 28, 0, 0, "same phone number"},
    {Sign::PhonesDiffer, -2, -2, 0, ""}, // most people have several
    {Sign::DesksDiffer, -5, -5, 0, ""}, // two extensions of one number
    {Sign::EmailSame, 30, 6, 0, "same e-mail address"},
    {Sign::OfficeEmailSame, 20, 0, 0, "same e-mail address"},
    {Sign::EmailsDiffer, -2, -2, 0, ""},
    {Sign::AccountSame, 30, 8, 0, "same account"},
    {Sign::PictureSame, 24, 4, 0, "same picture"}, // may be a program's default picture

    // Weighs by its parts, which are added in Evidence.cpp. Families and neighbours share it.
    {Sign::AddressSame, 0, 0, 0, "same address"},
    {Sign::AddressNear, 0, 0, 0, "similar address"},
    {Sign::StreetSame, 0, 0, 0, ""},
    {Sign::CityDiffers, 0, 0, 0, ""},
    {Sign::AddressesDiffer, -1, -1, -5, ""}, // people move, and have two
    {Sign::StreetDiffers, -3, 0, -0.01, ""}, // of one town, which namesakes have in common by chance
    {Sign::TownSame, 0, 0, 0, "same town"}, // by how rare it is
    {Sign::CompanySame, 0, -2, 0, "same company"}, // by how rare it is; there are more colleagues than relatives
    {Sign::CompaniesDiffer, -1, -1, 0, ""},

    // Companies have no other name.
    {Sign::CompanyNameSame, 12, 5, 0, "same company"},
    {Sign::CompanyNameMistyped, 8, 3, 0, "similar company"},
    {Sign::CompanyNameDiffers, -7, -7, -2, ""},
    {Sign::CompanyAndPerson, -4, -4, -2, ""}, // or a person's contact without a name
});
// clang-format on

static_assert([] {
    for (std::size_t i = 0; i < kSignWeights.size(); ++i) {
        if (kSignWeights[i].sign != static_cast<Sign>(i))
            return false;
    }
    return true;
}());

/// A value weighs less by this for each doubling of the people who share it.
inline constexpr double kBitsPerSharing = 3;

// How much a name or a place can tell: a common one little, a rare one no more than can be known from a book.
inline constexpr double kMostGivenBits = 7;
inline constexpr double kMostFamilyBits = 8;
inline constexpr double kMostTownBits = 3;
inline constexpr double kMostZipBits = 2;
inline constexpr double kMostCompanyBits = 4;

// The parts of a postal address; each is often mistyped.
inline constexpr double kStreetEqualBits = 8;
inline constexpr double kStreetAlikeBits = 6;
inline constexpr double kStreetPartlyBits = 3;
inline constexpr double kNumberBits = 4;
inline constexpr double kOtherStreetBits = -3;
inline constexpr double kOtherNumberBits = -4;
inline constexpr double kCityBits = 3;
inline constexpr double kZipBits = 4;
inline constexpr double kPlaceAlikeBits = 2;
inline constexpr double kOtherPlaceBits = -3;
inline constexpr double kOtherTownBelow = -4;
inline constexpr double kLeastAddressBits = 8; ///< below this they are two addresses

/// How many pairs of a book are one person: those certain by themselves, and one per so many contacts.
inline constexpr double kContactsPerDuplicate = 20;
inline constexpr double kSmallestBook = 1000; ///< a smaller one tells no more about how common things are
/// What is required beyond even odds, against strangers and against those who are close.
inline constexpr double kStrangerMargin = -5;
inline constexpr double kCloseMargin = -4;
inline constexpr double kSpoiledStrangerMargin = -3;
inline constexpr double kSpoiledMargin = 6; ///< instead of kCloseMargin

// The grades: log2 of the odds that are left.
inline constexpr double kCertainFrom = 5;
inline constexpr double kLikelyFrom = 0;
inline constexpr double kPossibleFrom = -5;
