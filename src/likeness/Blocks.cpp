// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "likeness/Blocks.h"

#include "likeness/Nicknames.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace {

constexpr std::size_t kLargestBlock = 40;
constexpr std::size_t kNeighbours = 8;
constexpr std::size_t kStreetWords = 3;
constexpr int kFewSharers = 3; ///< a switchboard has more: its block is split by initials

struct KeyOfContact
{
    quint64 key;
    quint32 contact;
    auto operator<=>(const KeyOfContact &) const = default;
};

enum class KeyKind : quint64 { Value = 1, Birthday, WholeName, NameInTown, NameAtCompany, Number, Zip, Company };

class Keys
{
public:
    explicit Keys(const BookTraits &book) : m_book(book) { }

    std::vector<KeyOfContact> all()
    {
        for (m_contact = 0; m_contact < m_book.contacts.size(); ++m_contact) {
            const Traits &contact = m_book.contacts[m_contact];
            if (contact.isCompany)
                add(KeyKind::Company, contact.company);
            addNames(contact);
            for (const AddressTrait &address : contact.addresses)
                addAddress(address);
        }
        std::ranges::sort(m_keys);
        m_keys.erase(std::unique(m_keys.begin(), m_keys.end()), m_keys.end());
        return std::move(m_keys);
    }

private:
    void add(KeyKind kind, quint64 a, quint64 b = 0)
    {
        constexpr quint64 kOdd = 0x9E3779B97F4A7C15;
        quint64 key = static_cast<quint64>(kind);
        for (const quint64 part : {a, b}) {
            key = (key ^ part) * kOdd;
            key ^= key >> 29;
        }
        m_keys.push_back({key, static_cast<quint32>(m_contact)});
    }

    static quint64 hash(std::string_view text) { return std::hash<std::string_view>()(text); }

    /// How a first name and its other forms begin.
    void collectInitials(quint32 number, std::set<char> &initials) const
    {
        const Vocabulary::Word &word = m_book.words.word(number);
        if (word.sound.empty())
            return;
        initials.insert(word.sound.front());
        if (word.nicknameRows) {
            for (const int row : *word.nicknameRows)
                initials.insert(soundOf(headOfNicknameRow(row)).front());
        }
    }

    void addNames(const Traits &contact)
    {
        const NameTraits &name = contact.name;
        // Which of the two is the first name is often wrong, so the keys do not tell them apart.
        std::set<quint32> distinct{name.given.whole, name.family.whole};
        distinct.insert(name.given.words.begin(), name.given.words.end());
        distinct.insert(name.family.words.begin(), name.family.words.end());
        distinct.erase(0);
        std::set<char> initials;
        if (contact.isCompany)
            collectInitials(contact.company, initials);
        for (const quint32 word : distinct)
            collectInitials(word, initials);
        for (const auto *others : {&name.middle, &name.nicknames}) {
            for (const quint32 word : *others)
                collectInitials(word, initials);
        }
        for (const ValueTrait &value : contact.values) {
            if (value.sharers <= kFewSharers) {
                add(KeyKind::Value, value.hash);
                continue;
            }
            for (const char initial : initials)
                add(KeyKind::Value, value.hash, static_cast<quint64>(initial));
        }
        if (contact.birthday.isValid()) {
            const auto day = static_cast<quint64>(contact.birthday.month() * 32 + contact.birthday.day());
            for (const char initial : initials)
                add(KeyKind::Birthday, day + 512 * static_cast<quint64>(contact.birthday.year()),
                    static_cast<quint64>(initial));
            for (const quint32 word : distinct) // without the year, or with another one
                add(KeyKind::Birthday, day, hash(m_book.words.word(word).sound));
        }
        const quint64 given = hash(m_book.words.word(name.given.whole).sound);
        const quint64 family = hash(m_book.words.word(name.family.whole).sound);
        if (name.given.whole != 0 && name.family.whole != 0)
            add(KeyKind::WholeName, given + family);
        for (const quint32 word : distinct) {
            for (const char initial : initials) {
                const quint64 key = hash(m_book.words.word(word).sound) + static_cast<quint64>(initial);
                for (const AddressTrait &address : contact.addresses) {
                    if (address.city != 0)
                        add(KeyKind::NameInTown, key, hash(m_book.words.word(address.city).sound));
                    if (address.zip != 0)
                        add(KeyKind::NameInTown, key, address.zip);
                }
                if (contact.company != 0)
                    add(KeyKind::NameAtCompany, key, contact.company);
            }
        }
    }

    void addAddress(const AddressTrait &address)
    {
        for (std::size_t i = 0; i < std::min(kStreetWords, address.streetWords.size()); ++i) {
            const quint64 sound = hash(m_book.words.word(address.streetWords[i]).sound);
            if (address.number != 0)
                add(KeyKind::Number, sound, address.number);
            if (address.zip != 0)
                add(KeyKind::Zip, sound, address.zip);
        }
        if (address.number != 0 && address.zip != 0)
            add(KeyKind::Zip, address.number, address.zip);
    }

    const BookTraits &m_book;
    std::size_t m_contact = 0;
    std::vector<KeyOfContact> m_keys;
};

} // namespace

Candidates candidatePairs(const BookTraits &book)
{
    const std::vector<KeyOfContact> keys = Keys(book).all();
    Candidates candidates;
    const auto add = [&](quint32 a, quint32 b) {
        const bool isInOrder = book.contacts[a].rank < book.contacts[b].rank;
        candidates.pairs.push_back(isInOrder ? CandidatePair{a, b} : CandidatePair{b, a});
    };
    const auto byName = [&](quint32 number) {
        const Traits &contact = book.contacts[number];
        const auto form = [&](quint32 word) -> std::string_view { return book.words.word(word).form; };
        return std::tuple(form(contact.name.family.whole), form(contact.name.given.whole), contact.rank);
    };
    std::vector<bool> isCrowded(book.contacts.size());
    std::vector<quint32> block;
    for (auto begin = keys.begin(); begin != keys.end();) {
        const auto end = std::find_if(begin, keys.end(), [&](const auto &entry) { return entry.key != begin->key; });
        block.clear();
        std::transform(begin, end, std::back_inserter(block), [](const auto &entry) { return entry.contact; });
        begin = end;
        const bool isLarge = block.size() > kLargestBlock;
        if (isLarge) {
            std::ranges::sort(block, {}, byName);
            for (const quint32 contact : block)
                isCrowded[contact] = true;
        }
        for (std::size_t i = 0; i < block.size(); ++i) {
            const std::size_t last = isLarge ? std::min(i + kNeighbours + 1, block.size()) : block.size();
            for (std::size_t j = i + 1; j < last; ++j)
                add(block[i], block[j]);
        }
    }
    std::ranges::sort(candidates.pairs);
    candidates.pairs.erase(std::unique(candidates.pairs.begin(), candidates.pairs.end()), candidates.pairs.end());
    candidates.crowded = static_cast<int>(std::ranges::count(isCrowded, true));
    return candidates;
}
