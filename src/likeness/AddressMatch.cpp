// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "likeness/AddressMatch.h"

#include "likeness/Weights.h"

#include <algorithm>
#include <iterator>

namespace {

/// The share of letter pairs in common.
double likenessOf(const std::vector<quint16> &a, const std::vector<quint16> &b)
{
    std::vector<quint16> common;
    std::ranges::set_intersection(a, b, std::back_inserter(common));
    return common.empty() ? 0 : 2 * static_cast<double>(common.size()) / static_cast<double>(a.size() + b.size());
}

double placeBits(const Word &a, const Word &b, double equal, int mostErrors)
{
    if (a.form.empty() || b.form.empty())
        return 0;
    const int errors = typingErrors(a.form, b.form);
    return errors == 0 ? equal : errors <= mostErrors ? kPlaceAlikeBits : kOtherPlaceBits;
}

AddressMatch match(const AddressTrait &a, const AddressTrait &b, const BookTraits &book)
{
    AddressMatch found;
    const double street = likenessOf(a.letterPairs, b.letterPairs);
    if (a.street != 0 && b.street != 0) {
        const double bits = street > 0.85 ? kStreetEqualBits
            : street > 0.65               ? kStreetAlikeBits
            : street > 0.45               ? kStreetPartlyBits
                                          : kOtherStreetBits;
        found.bits = std::min({bits, book.rarity(a.street, kStreetEqualBits), book.rarity(b.street, kStreetEqualBits)});
    }
    if (a.number != 0 && b.number != 0)
        found.bits += a.number == b.number ? kNumberBits : kOtherNumberBits;
    const Word &city = book.words[a.city];
    const Word &otherCity = book.words[b.city];
    found.bits += placeBits(city, otherCity, kCityBits, 2);
    found.bits += placeBits(book.words[a.zip], book.words[b.zip], kZipBits, 1);
    found.isStreetSame = street > 0.85 && a.number == b.number;
    found.isCityOther =
        a.city != 0 && b.city != 0 && typingErrors(city.form, otherCity.form) * 2 > static_cast<int>(city.form.size());
    found.isStreetOther = a.street != 0 && b.street != 0 && street <= 0.45;
    if (a.city == b.city && a.city != 0)
        found.townBits = book.rarity(a.city, kMostTownBits);
    if (found.townBits > 0 && a.zip == b.zip && a.zip != 0)
        found.townBits += book.rarity(a.zip, kMostZipBits);
    return found;
}

} // namespace

AddressMatch matchAddresses(const Traits &a, const Traits &b, const BookTraits &book)
{
    std::vector<AddressMatch> matches;
    for (const AddressTrait &one : a.addresses) {
        for (const AddressTrait &other : b.addresses)
            matches.push_back(match(one, other, book));
    }
    if (matches.empty())
        return {};
    AddressMatch best = *std::ranges::max_element(matches, {}, &AddressMatch::bits);
    best.townBits = std::ranges::max_element(matches, {}, &AddressMatch::townBits)->townBits;
    return best;
}
