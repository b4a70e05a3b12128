// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "likeness/Evidence.h"

#include "likeness/AddressMatch.h"
#include "likeness/NameMatch.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace {

constexpr int kGeneration = 15; // years

constexpr quint64 bitOf(Sign sign)
{
    return quint64{1} << static_cast<int>(sign);
}

constexpr quint64 kPersonalSigns = bitOf(Sign::BirthdaySame) | bitOf(Sign::BirthdayMistyped)
    | bitOf(Sign::BirthdayOfOtherName) | bitOf(Sign::PersonalPhoneSame) | bitOf(Sign::PhoneSame)
    | bitOf(Sign::EmailSame) | bitOf(Sign::AccountSame) | bitOf(Sign::PictureSame);

class Comparer
{
public:
    Comparer(const Traits &a, const Traits &b, const BookTraits &book) : m_a(a), m_b(b), m_book(book) { }

    Evidence evidence()
    {
        if (m_a.isCompany && m_b.isCompany)
            compareCompanyNames();
        else if (m_a.isCompany != m_b.isCompany)
            m_evidence.add(Sign::CompanyAndPerson);
        else
            compareNames();
        compareBirthdays();
        compareValues();
        const bool areOthers = m_evidence.has(Sign::FamilyDiffers) && !agreeGiven();
        if (areOthers && (m_evidence.signs & kPersonalSigns) == 0)
            return m_evidence; // neighbours and colleagues: spares much time
        compareAddresses();
        if (!m_a.isCompany && !m_b.isCompany && m_a.company != 0 && m_b.company != 0) {
            if (areColleagues())
                addRare(Sign::CompanySame, m_a.company, kMostCompanyBits);
            else if (!isTypingError(word(m_a.company), word(m_b.company)))
                m_evidence.add(Sign::CompaniesDiffer);
        }
        return m_evidence;
    }

private:
    const Word &word(quint32 number) const { return m_book.words[number]; }

    void addRare(Sign sign, quint32 number, double most)
    {
        m_evidence.add(sign);
        m_evidence.stranger += static_cast<float>(m_book.rarity(number, most));
    }

    void compareNames()
    {
        const NameMatch match = matchNames(m_a.name, m_b.name, m_book);
        if (match.isSwapped)
            m_evidence.add(Sign::NamesSwapped);
        if (m_a.name.spelling != m_b.name.spelling)
            m_evidence.add(Sign::NamesWrittenDifferently);
        addGiven(match.given, match.givenWord);
        addFamily(match.family, match.familyWord);
        if (match.middle != NameLikeness::Missing)
            m_evidence.add(match.middle < NameLikeness::Missing ? Sign::MiddleDiffers : Sign::MiddleSame);
        compareSuffixes();
    }

    void addGiven(NameLikeness likeness, quint32 word)
    {
        if (likeness == NameLikeness::Missing)
            return;
        static constexpr std::array kSigns{Sign::GivenDiffers, Sign::GivenUnlike, Sign{}, Sign::GivenSecond,
            Sign::GivenInitial, Sign::GivenMistyped, Sign::GivenNickname, Sign::GivenSame}; // by likeness
        const Sign sign = kSigns[static_cast<std::size_t>(likeness)];
        if (likeness < NameLikeness::Missing)
            m_evidence.add(sign);
        else
            addRare(sign, word, likeness <= NameLikeness::Initial ? kMostGivenBits / 3 : kMostGivenBits);
    }

    void addFamily(NameLikeness likeness, quint32 word)
    {
        if (likeness == NameLikeness::Same)
            addRare(Sign::FamilySame, word, kMostFamilyBits);
        else if (likeness == NameLikeness::Mistyped)
            addRare(Sign::FamilyMistyped, word, kMostFamilyBits);
        else if (likeness == NameLikeness::Differs)
            m_evidence.add(Sign::FamilyDiffers);
        else if (likeness == NameLikeness::Missing && agreeGiven())
            m_evidence.add(Sign::FamilyMissing);
    }

    void compareSuffixes()
    {
        const NameSuffix a = m_a.name.suffix;
        const NameSuffix b = m_b.name.suffix;
        if (a == NameSuffix::None && b == NameSuffix::None)
            return;
        if (a == b)
            m_evidence.add(Sign::SuffixSame);
        else
            m_evidence.add(a == NameSuffix::None || b == NameSuffix::None ? Sign::SuffixOnOne : Sign::SuffixDiffers);
    }

    void compareCompanyNames()
    {
        const bool isAlike = isTypingError(word(m_a.company), word(m_b.company));
        m_evidence.add(m_a.company == m_b.company ? Sign::CompanyNameSame
                : isAlike                         ? Sign::CompanyNameMistyped
                                                  : Sign::CompanyNameDiffers);
    }

    void compareBirthdays()
    {
        const QDate a = m_a.birthday;
        const QDate b = m_b.birthday;
        if (!a.isValid() || !b.isValid())
            return;
        const bool sameDay = a.day() == b.day() && a.month() == b.month();
        if (a.year() == kNoYear || b.year() == kNoYear)
            m_evidence.add(sameDay ? Sign::BirthdayWithoutYear : Sign::BirthdayDiffers);
        else if (a == b)
            m_evidence.add(
                agreeGiven() && !m_evidence.has(Sign::MiddleDiffers) ? Sign::BirthdaySame : Sign::BirthdayOfOtherName);
        else if (!areOneSlipApart(a, b))
            m_evidence.add(Sign::BirthdayDiffers);
        else
            m_evidence.add(
                std::abs(a.year() - b.year()) < kGeneration ? Sign::BirthdayMistyped : Sign::BirthdayDecadesApart);
    }

    bool agreeGiven() const
    {
        return m_evidence.agreeGiven()
            || m_evidence.hasAny({Sign::GivenInitial, Sign::CompanyNameSame, Sign::CompanyNameMistyped});
    }

    static bool areOneSlipApart(QDate a, QDate b)
    {
        if (a.year() == b.year() && a.month() == b.day() && a.day() == b.month())
            return true;
        const auto digits = [](QDate date) {
            return std::to_string(date.year() * 10000 + date.month() * 100 + date.day());
        };
        return typingErrors(digits(a), digits(b)) <= 1;
    }

    bool areColleagues() const { return m_a.company != 0 && m_a.company == m_b.company; }

    Sign signOf(const ValueTrait &a, const ValueTrait &b) const
    {
        static constexpr std::array kSigns{
            Sign::PhoneSame, Sign::EmailSame, Sign::OfficeEmailSame, Sign::AccountSame, Sign::PictureSame}; // by kind
        if (a.kind != ValueKind::Phone)
            return kSigns[static_cast<std::size_t>(a.kind)];
        if ((a.extension == 0) != (b.extension == 0) || a.use == PhoneUse::Shared || b.use == PhoneUse::Shared)
            return Sign::SharedPhoneSame;
        if (a.use == PhoneUse::Personal || b.use == PhoneUse::Personal)
            return Sign::PersonalPhoneSame;
        return areColleagues() ? Sign::SharedPhoneSame : Sign::PhoneSame; // a switchboard
    }

    void compareValues()
    {
        for (const ValueTrait &a : m_a.values) {
            for (const ValueTrait &b : m_b.values) {
                if (a.kind != b.kind || a.hash != b.hash)
                    continue;
                if (a.extension != 0 && b.extension != 0 && a.extension != b.extension)
                    m_evidence.add(Sign::DesksDiffer);
                else
                    addValue(signOf(a, b), std::max(a.sharers, b.sharers));
            }
        }
        if (haveOthers(ValueKind::Phone) && !m_evidence.hasAny({Sign::PersonalPhoneSame, Sign::PhoneSame}))
            m_evidence.add(Sign::PhonesDiffer);
        if (haveOthers(ValueKind::Email) && !m_evidence.has(Sign::EmailSame))
            m_evidence.add(Sign::EmailsDiffer);
    }

    /// Whether each has values of a kind that the other has not.
    bool haveOthers(ValueKind kind) const
    {
        const auto hasOther = [kind](const Traits &one, const Traits &other) {
            return std::ranges::any_of(one.values, [&](const ValueTrait &value) {
                return value.kind == kind && std::ranges::none_of(other.values, [&](const ValueTrait &same) {
                    return same.kind == kind && same.hash == value.hash;
                });
            });
        };
        return hasOther(m_a, m_b) && hasOther(m_b, m_a);
    }

    void addValue(Sign sign, int sharers)
    {
        if (m_evidence.has(sign))
            return;
        m_evidence.add(sign);
        const SignWeight &weight = kSignWeights[static_cast<std::size_t>(sign)];
        const double doublings = std::log2(sharers);
        const double less = kBitsPerSharing * doublings;
        m_evidence.stranger -= static_cast<float>(std::min(less, weight.stranger));
        // Among many colleagues some have the same name.
        m_evidence.close -= static_cast<float>(std::min(less, weight.close + std::max(0.0, doublings - 1)));
    }

    void compareAddresses()
    {
        const AddressMatch match = matchAddresses(m_a, m_b, m_book);
        if (match.isStreetSame)
            m_evidence.add(Sign::StreetSame);
        if (match.isCityOther)
            m_evidence.add(Sign::CityDiffers);
        if (match.bits >= kLeastAddressBits) {
            m_evidence.add(match.isStreetSame ? Sign::AddressSame : Sign::AddressNear);
            m_evidence.stranger += static_cast<float>(match.bits);
            return;
        }
        if (match.bits < kOtherTownBelow)
            m_evidence.add(Sign::AddressesDiffer);
        if (match.townBits > 0) {
            if (match.isStreetOther)
                m_evidence.add(Sign::StreetDiffers);
            m_evidence.add(Sign::TownSame);
            m_evidence.stranger += static_cast<float>(match.townBits);
        }
    }

    const Traits &m_a;
    const Traits &m_b;
    const BookTraits &m_book;
    Evidence m_evidence;
};

/// The sums of both columns, without the prior odds.
std::pair<double, double> sumsOf(const Evidence &evidence, bool isSpoiled)
{
    double stranger = evidence.stranger;
    double close = evidence.close;
    const bool mayBeWrong = isSpoiled && !evidence.hasAny({Sign::PhonesDiffer, Sign::EmailsDiffer});
    for (quint64 left = evidence.signs; left != 0; left &= left - 1) {
        const SignWeight &weight = kSignWeights[static_cast<std::size_t>(std::countr_zero(left))];
        const bool isOther = mayBeWrong && weight.spoiled != 0;
        stranger += isOther ? weight.spoiled : weight.stranger;
        close += isOther ? weight.spoiled : weight.close;
    }
    return {stranger, close};
}

} // namespace

BookHabits::BookHabits(std::size_t contacts)
    : m_contacts(std::max(kSmallestBook, static_cast<double>(contacts))), m_first(oddsFor(0))
{ }

PriorOdds BookHabits::oddsFor(int duplicates) const
{
    const double pairs = duplicates + m_contacts / kContactsPerDuplicate;
    return {std::log2(2 * pairs / m_contacts / m_contacts) + kStrangerMargin, kCloseMargin};
}

PriorOdds BookHabits::priorOdds() const
{
    PriorOdds odds = oddsFor(m_pairs[Certain]);
    // Errors that no family explains, of two kinds, so that people who married or towns of two names are not enough.
    constexpr int kFew = 5;
    constexpr double kLeastShare = 0.01;
    const int errors = std::min(m_pairs[OtherSurname], m_pairs[OtherCity]);
    // They hit all fields about alike. Contradictions that are much more frequent are families'.
    constexpr int kMostPerError = 3;
    odds.isSpoiled = errors >= kFew && errors >= kLeastShare * m_pairs[Alike]
        && std::max(m_pairs[OtherGiven], m_pairs[OtherBirthday]) <= kMostPerError * errors;
    if (odds.isSpoiled) {
        odds.close = kSpoiledMargin;
        odds.stranger += kSpoiledStrangerMargin - kStrangerMargin;
    }
    return odds;
}

void BookHabits::count(const Evidence &evidence)
{
    const auto addIf = [this](Kind kind, bool isSo) { m_pairs[kind] += isSo ? 1 : 0; };
    addIf(Certain, scoreOf(evidence, m_first) >= kCertainFrom);
    const bool shareHome =
        evidence.hasAny({Sign::AddressSame, Sign::SharedPhoneSame, Sign::PhoneSame, Sign::PersonalPhoneSame});
    if (evidence.agreeGiven() && evidence.has(Sign::BirthdaySame) && evidence.has(Sign::StreetSame)) {
        addIf(Alike, true);
        addIf(OtherSurname, evidence.has(Sign::FamilyDiffers));
        addIf(OtherCity, evidence.agreeFamily() && evidence.has(Sign::CityDiffers));
    }
    if (evidence.agreeFamily() && shareHome) {
        addIf(OtherGiven, evidence.hasAny({Sign::GivenDiffers, Sign::GivenUnlike}));
        addIf(OtherBirthday, evidence.agreeGiven() && evidence.has(Sign::BirthdayDiffers));
    }
}

void BookHabits::add(const BookHabits &other)
{
    for (std::size_t kind = 0; kind < Kinds; ++kind)
        m_pairs[kind] += other.m_pairs[kind];
}

Evidence compare(const BookTraits &book, quint32 one, quint32 other)
{
    const Traits &a = book.contacts[one];
    const Traits &b = book.contacts[other];
    return (a.rank < b.rank ? Comparer(a, b, book) : Comparer(b, a, book)).evidence();
}

double scoreOf(const Evidence &evidence, const PriorOdds &prior)
{
    const auto [stranger, close] = sumsOf(evidence, prior.isSpoiled);
    return std::min(prior.stranger + stranger, prior.close + close);
}

bool mayBeOnePerson(const Evidence &evidence)
{
    constexpr double kLeastBits = 5; // even in a book in which every contact is there twice
    return std::max(sumsOf(evidence, false).first, sumsOf(evidence, true).first) >= kLeastBits;
}

bool excludesOnePerson(const Evidence &evidence, const PriorOdds &prior, bool hasOtherSpelling)
{
    if (evidence.has(Sign::SuffixDiffers))
        return true;
    const bool isContradiction = evidence.hasAny({Sign::GivenDiffers, Sign::SuffixOnOne, Sign::BirthdayDiffers,
                                     Sign::BirthdayDecadesApart, Sign::DesksDiffer, Sign::CompanyNameDiffers})
        || (evidence.has(Sign::GivenUnlike) && !hasOtherSpelling);
    return isContradiction && !prior.isSpoiled && scoreOf(evidence, prior) < kLikelyFrom;
}

QStringList reasonsOf(const Evidence &evidence)
{
    QStringList reasons;
    Evidence told;
    if (evidence.agreeGiven() && evidence.agreeFamily()) {
        const bool isExact = evidence.has(Sign::GivenSame) && evidence.has(Sign::FamilySame)
            && !evidence.hasAny({Sign::NamesWrittenDifferently, Sign::NamesSwapped});
        const bool isMistyped = evidence.hasAny({Sign::GivenMistyped, Sign::FamilyMistyped});
        reasons += isExact ? QStringLiteral("same name")
            : isMistyped   ? QStringLiteral("similar name")
                           : QStringLiteral("same name, written differently");
        for (const Sign sign :
            {Sign::GivenSame, Sign::GivenNickname, Sign::GivenMistyped, Sign::FamilySame, Sign::FamilyMistyped})
            told.add(sign);
    }
    for (const SignWeight &weight : kSignWeights) {
        const QString says = QString::fromLatin1(weight.says);
        if (evidence.has(weight.sign) && !told.has(weight.sign) && !says.isEmpty() && !reasons.contains(says))
            reasons += says;
    }
    return reasons;
}
