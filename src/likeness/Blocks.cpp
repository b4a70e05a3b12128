// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "likeness/Blocks.h"

#include <algorithm>
#include <set>

namespace {

constexpr std::ptrdiff_t kLargestBlock = 40;
constexpr std::ptrdiff_t kNeighbours = 4;
constexpr std::size_t kStreetWords = 3;
constexpr int kFewSharers = 3; ///< a switchboard has more: its block is split by initials

/// Contacts with an equal key are compared.
struct KeyOfContact
{
    quint64 key;
    quint32 contact;
    auto operator<=>(const KeyOfContact &) const = default;
};

enum class KeyKind : quint64 { Value = 1, Birthday, Name, NameInTown, Number, Zip };

class Keys
{
public:
    Keys(const BookTraits &book, quint32 contact, std::vector<KeyOfContact> &keys)
        : m_book(book), m_contact(contact), m_keys(keys)
    { }

    void add()
    {
        const Traits &contact = m_book.contacts[m_contact];
        const NameTraits &name = contact.name;
        // Which of the two is the first name is often wrong, so the keys do not tell them apart.
        std::set<quint32> names{contact.isCompany ? contact.company : 0};
        for (const NameReading &reading : name.readings) {
            names.insert({reading.given.whole, reading.family.whole});
            names.insert(reading.given.words.begin(), reading.given.words.end());
            names.insert(reading.family.words.begin(), reading.family.words.end());
        }
        names.erase(0);
        std::set<char> initials;
        const auto collect = [&](const auto &words) {
            for (const quint32 number : words)
                initials.insert(word(number).initials.begin(), word(number).initials.end());
        };
        collect(names);
        collect(name.middle);
        collect(name.nicknames);
        for (const ValueTrait &value : contact.values)
            addSplit(KeyKind::Value, value.hash, initials, value.sharers > kFewSharers);
        if (contact.birthday.isValid())
            addSplit(KeyKind::Birthday, static_cast<quint64>(contact.birthday.toJulianDay()), initials, true);
        add(KeyKind::Name,
            contact.isCompany ? contact.company
                              : sound(name.readings.back().given.whole) + sound(name.readings.back().family.whole));
        for (const AddressTrait &address : contact.addresses) {
            addAddress(address);
            for (const quint32 number : names)
                addSplit(KeyKind::NameInTown, sound(number) * 31 + sound(address.city), initials, true);
        }
    }

private:
    const Word &word(quint32 number) const { return m_book.words[number]; }
    quint64 sound(quint32 number) const { return std::hash<std::string>()(word(number).sound); }

    void add(KeyKind kind, quint64 a, quint64 b = 0)
    {
        constexpr quint64 kOdd = 0x9E3779B97F4A7C15;
        quint64 key = static_cast<quint64>(kind);
        for (const quint64 part : {a, b}) {
            key = (key ^ part) * kOdd;
            key ^= key >> 29;
        }
        m_keys.push_back({key, m_contact});
    }

    /// One for each initial where that is wanted.
    void addSplit(KeyKind kind, quint64 value, const std::set<char> &initials, bool isSplit)
    {
        if (!isSplit)
            return add(kind, value);
        for (const char initial : initials)
            add(kind, value, static_cast<quint64>(initial));
    }

    void addAddress(const AddressTrait &address)
    {
        for (std::size_t i = 0; i < std::min(kStreetWords, address.streetWords.size()); ++i) {
            const quint64 street = sound(address.streetWords[i]);
            if (address.number != 0)
                add(KeyKind::Number, street * 31 + address.number, sound(address.city));
            if (address.zip != 0)
                add(KeyKind::Zip, street, address.zip);
        }
        if (address.number != 0 && address.zip != 0)
            add(KeyKind::Zip, address.number, address.zip);
    }

    const BookTraits &m_book;
    quint32 m_contact;
    std::vector<KeyOfContact> &m_keys;
};

} // namespace

Candidates candidatePairs(const BookTraits &book, const LikenessProgress &progress)
{
    std::vector<KeyOfContact> keys;
    for (quint32 contact = 0; contact < book.contacts.size(); ++contact) {
        if (!progress(contact / 2.0 / static_cast<double>(book.contacts.size())))
            return {};
        Keys(book, contact, keys).add();
    }
    std::ranges::sort(keys);
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    const auto byName = [&](const KeyOfContact &entry) {
        const Traits &contact = book.contacts[entry.contact];
        const auto form = [&](quint32 word) -> std::string_view { return book.words[word].form; };
        const NameReading &name = contact.name.readings.back();
        return std::tuple(form(name.family.whole), form(name.given.whole), contact.rank);
    };
    Candidates candidates;
    std::vector<bool> isCrowded(book.contacts.size());
    for (auto begin = keys.begin(); begin != keys.end();) {
        if (!progress((1 + static_cast<double>(begin - keys.begin()) / static_cast<double>(keys.size())) / 2))
            return {};
        const auto end = std::find_if(begin, keys.end(), [&](const auto &entry) { return entry.key != begin->key; });
        const bool isLarge = end - begin > kLargestBlock;
        if (isLarge)
            std::sort(begin, end, [&](const auto &a, const auto &b) { return byName(a) < byName(b); });
        for (; begin != end; ++begin) {
            if (isLarge)
                isCrowded[begin->contact] = true;
            const auto last = isLarge && end - begin > kNeighbours + 1 ? begin + kNeighbours + 1 : end;
            for (auto other = begin + 1; other < last; ++other) {
                const auto [a, b] = std::minmax(begin->contact, other->contact,
                    [&](quint32 x, quint32 y) { return book.contacts[x].rank < book.contacts[y].rank; });
                candidates.pairs.push_back({a, b});
            }
        }
    }
    std::ranges::sort(candidates.pairs);
    candidates.pairs.erase(std::unique(candidates.pairs.begin(), candidates.pairs.end()), candidates.pairs.end());
    candidates.crowded = static_cast<int>(std::ranges::count(isCrowded, true));
    return candidates;
}
