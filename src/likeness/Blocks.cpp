// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "likeness/Blocks.h"

#include <algorithm>
#include <set>

namespace {

constexpr std::ptrdiff_t kNeighbours = 2; ///< on either side
constexpr std::ptrdiff_t kCrowd = 40; ///< beyond it the result says that not all were compared
constexpr std::size_t kStreetWords = 2;
constexpr int kFewSharers = 3; ///< a switchboard has more

/// Contacts with an equal key are compared.
struct KeyOfContact
{
    quint64 key;
    quint32 contact;
    auto operator<=>(const KeyOfContact &) const = default;
};

enum KeyKind : quint64 { Value = 1, Birthday, Name, NameInTown, NameInZip, House, StreetInZip };

/// Each key joins two things, so that few people share it by chance even in a book of a million. Which of two names is
/// the first name is often wrong, so the keys do not tell them apart.
class Keys
{
public:
    Keys(const BookTraits &book, quint32 contact, std::vector<KeyOfContact> &keys)
        : m_book(book), m_number(contact), m_contact(book.contacts[contact]), m_keys(keys)
    {
        const auto insert = [](const std::vector<quint32> &words, std::set<quint32> &to) {
            to.insert(words.begin(), words.end());
        };
        m_names.insert(m_contact.isCompany ? m_contact.company : 0);
        for (const NameReading &reading : m_contact.name.readings) {
            m_names.insert({reading.given.whole, reading.family.whole});
            insert(reading.given.words, m_names);
            insert(reading.family.words, m_names);
        }
        m_names.erase(0);
        m_allNames = m_names;
        insert(m_contact.name.middle, m_allNames);
        insert(m_contact.name.nicknames, m_allNames);
    }

    void add()
    {
        for (const ValueTrait &value : m_contact.values) {
            if (value.sharers <= kFewSharers)
                add({Value, value.hash});
            for (const quint32 name : m_names) {
                if (value.sharers > kFewSharers)
                    add({Value, value.hash, sound(name)});
            }
        }
        if (m_contact.birthday.isValid())
            addByInitials(Birthday, static_cast<quint64>(m_contact.birthday.toJulianDay()), 0, 0);
        const NameReading &name = m_contact.name.readings.back();
        add({Name, m_contact.isCompany ? m_contact.company : sound(name.given.whole) + sound(name.family.whole)});
        for (const AddressTrait &address : m_contact.addresses)
            addAddress(address);
    }

private:
    const Word &word(quint32 number) const { return m_book.words[number]; }
    quint64 sound(quint32 number) const { return word(number).sound; }

    void add(std::initializer_list<quint64> parts)
    {
        quint64 key = 0;
        for (const quint64 part : parts) {
            key = (key ^ part) * 0x9E3779B97F4A7C15;
            key ^= key >> 29;
        }
        m_keys.push_back({key, m_number});
    }

    /// Those of all names but one, which the key holds already.
    void addByInitials(KeyKind kind, quint64 a, quint64 b, quint32 without)
    {
        std::set<char> initials;
        for (const quint32 name : m_allNames) {
            if (name != without)
                initials.insert(word(name).initials.begin(), word(name).initials.end());
        }
        for (const char initial : initials)
            add({kind, a, b, static_cast<quint64>(initial)});
    }

    void addAddress(const AddressTrait &address)
    {
        for (const quint32 name : m_names) {
            if (address.city != 0)
                addByInitials(NameInTown, sound(name), sound(address.city), name);
            if (address.zip != 0)
                add({NameInZip, sound(name), address.zip});
        }
        for (std::size_t i = 0; i < std::min(kStreetWords, address.streetWords.size()); ++i) {
            const quint64 street = sound(address.streetWords[i]);
            if (address.number != 0)
                add({House, street, address.number, sound(address.city)});
            if (address.zip != 0)
                add({StreetInZip, street, address.zip});
        }
    }

    const BookTraits &m_book;
    quint32 m_number;
    const Traits &m_contact;
    std::vector<KeyOfContact> &m_keys;
    std::set<quint32> m_names;
    std::set<quint32> m_allNames; // with middle names and nicknames
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
        const bool isLarge = end - begin > 2 * kNeighbours + 1;
        const bool isCrowd = end - begin > kCrowd;
        if (isLarge)
            std::sort(begin, end, [&](const auto &a, const auto &b) { return byName(a) < byName(b); });
        for (; begin != end; ++begin) {
            if (isCrowd)
                isCrowded[begin->contact] = true;
            const auto last = isLarge && end - begin > kNeighbours + 1 ? begin + kNeighbours + 1 : end;
            for (auto other = begin + 1; other < last; ++other) {
                const auto [first, second] = std::minmax(begin->contact, other->contact);
                candidates.pairs.push_back({first, second});
            }
        }
    }
    std::ranges::sort(candidates.pairs);
    candidates.pairs.erase(std::unique(candidates.pairs.begin(), candidates.pairs.end()), candidates.pairs.end());
    candidates.crowded = static_cast<int>(std::ranges::count(isCrowded, true));
    return candidates;
}
