// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "likeness/AddressMatch.h"

#include "likeness/Weights.h"

#include <algorithm>

namespace {

double placeBits(int errors, double equal, int mostErrors)
{
    return errors == 0 ? equal : errors <= mostErrors ? kPlaceAlikeBits : kOtherPlaceBits;
}

/// The share of letter pairs in common.
double likenessOf(const std::vector<quint16> &a, const std::vector<quint16> &b)
{
    int common = 0;
    auto other = b.begin();
    for (const quint16 pair : a) {
        while (other != b.end() && *other < pair)
            ++other;
        if (other != b.end() && *other == pair) {
            ++common;
            ++other;
        }
    }
    return common == 0 ? 0 : 2.0 * common / static_cast<double>(a.size() + b.size());
}

AddressMatch match(const AddressTrait &a, const AddressTrait &b, const BookTraits &book)
{
    AddressMatch found;
    const double street = a.street == b.street && a.street != 0 ? 1 : likenessOf(a.letterPairs, b.letterPairs);
    if (a.street != 0 && b.street != 0) {
        const double bits = street > 0.85 ? kStreetEqualBits
            : street > 0.65               ? kStreetAlikeBits
            : street > 0.45               ? kStreetPartlyBits
                                          : kOtherStreetBits;
        found.bits = std::min({bits, book.rarity(a.street, kStreetEqualBits), book.rarity(b.street, kStreetEqualBits)});
        found.isStreetOther = street <= 0.45;
    }
    if (a.number != 0 && b.number != 0)
        found.bits += a.number == b.number ? kNumberBits : kOtherNumberBits;
    found.isStreetSame = street > 0.85 && a.number == b.number;
    if (a.city != 0 && b.city != 0) {
        const std::string &city = book.words[a.city].form;
        const int errors = typingErrors(city, book.words[b.city].form);
        found.bits += placeBits(errors, kCityBits, 2);
        found.isCityOther = errors * 2 > static_cast<int>(city.size());
        if (errors == 0)
            found.townBits = book.rarity(a.city, kMostTownBits);
    }
    if (a.zip != 0 && b.zip != 0) {
        const int errors = typingErrors(book.words[a.zip].form, book.words[b.zip].form);
        found.bits += placeBits(errors, kZipBits, 1);
        if (errors == 0 && found.townBits > 0)
            found.townBits += book.rarity(a.zip, kMostZipBits);
    }
    return found;
}

} // namespace

AddressMatch matchAddresses(const Traits &a, const Traits &b, const BookTraits &book)
{
    AddressMatch best;
    double townBits = 0;
    bool isFirst = true;
    for (const AddressTrait &one : a.addresses) {
        for (const AddressTrait &other : b.addresses) {
            const AddressMatch found = match(one, other, book);
            townBits = std::max(townBits, found.townBits);
            if (isFirst || found.bits > best.bits)
                best = found;
            isFirst = false;
        }
    }
    best.townBits = townBits;
    return best;
}
