// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "likeness/Traits.h"

#include "likeness/NameMatch.h"
#include "likeness/TwoThreads.h"

#include <QSet>

#include <algorithm>
#include <cmath>

namespace {

using Numbers = std::vector<quint32>;

quint64 hashOf(ValueKind kind, const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    return std::hash<std::string_view>()({bytes.data(), static_cast<std::size_t>(bytes.size())})
        ^ (std::uint64_t{0x9E3779B97F4A7C15} * (static_cast<quint64>(kind) + 1));
}

/// Addresses that a group of people reads.
bool isOfficeEmail(const QString &local, const QString &host)
{
    static const QSet<QString> offices = [] {
        const auto names =
            QStringLiteral("info office kontakt contact contacto mail email post sales support admin hello "
                           "hallo team service buchhaltung accounts accounting verwaltung sekretariat "
                           "webmaster noreply no-reply newsletter familie family reception empfang "
                           "bestellung orders billing hr jobs marketing press presse zentrale")
                .split(u' ');
        return QSet<QString>(names.begin(), names.end());
    }();
    return offices.contains(local) || local.contains(QLatin1String("famil")) || local == host.section(u'.', 0, 0);
}

ValueTrait emailTrait(const QString &text)
{
    QString address = text.trimmed().toLower();
    if (const qsizetype open = address.indexOf(u'<'); open >= 0)
        address = address.mid(open + 1).section(u'>', 0, 0);
    if (address.startsWith(QLatin1String("mailto:")))
        address = address.mid(7);
    QString host = address.section(u'@', 1);
    QString local = address.section(u'@', 0, 0).section(u'+', 0, 0);
    if (host == QLatin1String("googlemail.com"))
        host = QStringLiteral("gmail.com");
    if (host == QLatin1String("gmail.com"))
        local.remove(u'.');
    const ValueKind kind = isOfficeEmail(local, host) ? ValueKind::OfficeEmail : ValueKind::Email;
    return {.kind = kind, .hash = hashOf(kind, local % u'@' % host)};
}

class Reader
{
public:
    explicit Reader(Vocabulary &words) : m_words(words)
    {
        static constexpr std::pair<const char *, NameSuffix> kSuffixes[]{{"jr junior jun", NameSuffix::Junior},
            {"sr senior sen", NameSuffix::Senior}, {"ii", NameSuffix::Second}, {"iii", NameSuffix::Third},
            {"iv", NameSuffix::Fourth}};
        for (const auto &[texts, suffix] : kSuffixes) {
            for (const quint32 word : setOf(texts))
                m_suffixes[word] = suffix;
        }
        static constexpr std::pair<const char *, const char *> kStreets[]{{"st", "street"}, {"str", "strasse"},
            {"av", "avenue"}, {"ave", "avenue"}, {"rd", "road"}, {"dr", "drive"}, {"pl", "place"}, {"ln", "lane"},
            {"blvd", "boulevard"}, {"c", "calle"}};
        for (const auto &[brief, full] : kStreets)
            m_streets[*setOf(brief).begin()] = *setOf(full).begin();
    }

    Traits read(const PersonRecord &record)
    {
        Traits traits;
        traits.birthday = record.birthday().value_or(QDate());
        readName(record, traits);
        readValues(record, traits.values);
        for (const auto &entry : record.entries(kABAddressProperty))
            readAddress(entry.dictionary(), traits.addresses);
        return traits;
    }

private:
    QSet<quint32> setOf(const char *text)
    {
        const Numbers words = m_words.numbers(QString::fromLatin1(text));
        return {words.begin(), words.end()};
    }

    Numbers numbers(const QString *text) { return text ? m_words.numbers(*text) : Numbers(); }

    static Numbers without(const QSet<quint32> &unwanted, Numbers words)
    {
        std::erase_if(words, [&](quint32 word) { return unwanted.contains(word); });
        return words;
    }

    Numbers withoutParticles(const Numbers &words) const
    {
        const Numbers rest = without(m_particles, words);
        return rest.empty() ? words : rest;
    }

    WordsOfName part(Numbers words)
    {
        const quint32 whole = m_words.joined(words);
        return {std::move(words), whole};
    }

    quint32 counted(quint32 word)
    {
        m_words.count(word);
        return word;
    }

    /// Without titles, and with a suffix at the end noted.
    Numbers nameWords(const QString &text, NameSuffix &suffix)
    {
        Numbers words = m_words.numbers(text);
        if (words.size() > 1 && m_suffixes.contains(words.back())) {
            suffix = m_suffixes.value(words.back());
            words.pop_back();
        }
        return without(m_titles, std::move(words));
    }

    void readName(const PersonRecord &record, Traits &traits)
    {
        NameTraits &name = traits.name;
        QString first = record.textOrEmpty(kABFirstNameProperty);
        QString last = record.textOrEmpty(kABLastNameProperty);
        name.spelling = qHashMulti(0, first, last);
        const QString only = first.isEmpty() ? last : last.isEmpty() ? first : QString();
        if (const QString behind = only.section(u',', 1); !behind.isEmpty()) {
            const Numbers words = m_words.numbers(behind);
            if (words.size() != 1 || !m_suffixes.contains(words.front())) { // not "Martin King, Jr."
                last = only.section(u',', 0, 0);
                first = behind;
            }
        }
        for (const quint32 word : numbers(record.text(kABSuffixProperty)))
            name.suffix = m_suffixes.value(word, name.suffix);
        const Numbers given = nameWords(first, name.suffix);
        const Numbers family = withoutParticles(nameWords(last, name.suffix));
        Numbers company = without(m_legalForms, numbers(record.text(kABOrganizationProperty)));
        traits.isCompany =
            !company.empty() && (record.flags() == kABShowAsCompany || (given.empty() && family.empty()));
        const Numbers department = numbers(record.text(kABDepartmentProperty));
        if (traits.isCompany) // its departments have contacts of their own
            company.insert(company.end(), department.begin(), department.end());
        traits.company = counted(m_words.joined(company));
        name.readings.push_back({part(given), part(family)});
        if (traits.isCompany)
            return;
        const auto lettersOf = [this](quint32 one, quint32 other) {
            const std::string form = formOf(m_words[one].form + m_words[other].form);
            return form.empty() ? 0 : std::hash<std::string>()(form);
        };
        name.letters = lettersOf(name.readings.front().given.whole, name.readings.front().family.whole);
        name.lettersSwapped = lettersOf(name.readings.front().family.whole, name.readings.front().given.whole);
        if (given.empty() != family.empty()) {
            const Numbers all = withoutParticles(given.empty() ? family : given);
            if (all.size() > 1)
                name.readings.push_back({part({all.front()}), part({all.begin() + 1, all.end()})});
        }
        const NameReading &counts = name.readings.back();
        counted(counts.given.words.empty() ? 0 : counts.given.words.front());
        if (counts.given.words.size() > 1)
            counted(counts.given.whole);
        counted(counts.family.whole);
        name.middle = numbers(record.text(kABMiddleNameProperty));
        name.nicknames = numbers(record.text(kABNicknameProperty));
        name.maiden = withoutParticles(numbers(record.text(kABMaidenNameProperty)));
    }

    static void readValues(const PersonRecord &record, std::vector<ValueTrait> &values)
    {
        for (const auto &entry : record.entries(kABEmailProperty)) {
            if (entry.text().contains(u'@'))
                values.push_back(emailTrait(entry.text()));
        }
        readAccounts(record.entries(kABInstantMessageProperty), kABInstantMessageServiceKey,
            kABInstantMessageUsernameKey, values);
        readAccounts(
            record.entries(kABSocialProfileProperty), kABSocialProfileServiceKey, kABSocialProfileUsernameKey, values);
        if (const QByteArray *const picture = record.imageData())
            values.push_back(
                {.kind = ValueKind::Picture, .hash = qHashBits(picture->data(), size_t(picture->size()), 1)});
    }

    static void readAccounts(
        std::span<const ABMultiValue::Entry> accounts, ABKey service, ABKey name, std::vector<ValueTrait> &values)
    {
        for (const auto &entry : accounts) {
            const QString *const user = entry.dictionary().valueForKey(name);
            if (!user || user->trimmed().isEmpty())
                continue;
            const QString *const serviceText = entry.dictionary().valueForKey(service);
            QString account = serviceText ? serviceText->toLower() : QString();
            if (account.endsWith(QLatin1String("instant")))
                account.chop(7);
            QString bare = user->trimmed().toLower();
            while (bare.endsWith(u'/'))
                bare.chop(1);
            bare = bare.section(u'/', -1);
            if (bare.startsWith(u'@'))
                bare = bare.mid(1);
            values.push_back({.kind = ValueKind::Account, .hash = hashOf(ValueKind::Account, account % u'\n' % bare)});
        }
    }

    void readAddress(const ABDictionary &address, std::vector<AddressTrait> &addresses)
    {
        AddressTrait trait;
        Numbers &street = trait.streetWords;
        for (const quint32 word : numbers(address.valueForKey(kABAddressStreetKey))) {
            const std::string &form = m_words[word].form;
            if (const std::size_t digit = form.find_first_of("0123456789"); digit == std::string::npos)
                street.push_back(streetWord(word));
            else if (trait.number == 0)
                trait.number = m_words.numbers(QString::fromStdString(leadingNumber(form.substr(digit)))).front();
        }
        std::string letters;
        for (const quint32 word : street)
            letters += m_words[word].form;
        for (std::size_t i = 1; i < letters.size(); ++i)
            trait.letterPairs.push_back(static_cast<quint16>((letters[i - 1] << 8) | letters[i]));
        std::ranges::sort(trait.letterPairs);
        trait.street = counted(m_words.joined(street));
        std::ranges::stable_sort(street, std::greater(), [&](quint32 word) { return m_words[word].form.size(); });
        trait.city = counted(m_words.joined(numbers(address.valueForKey(kABAddressCityKey))));
        trait.zip = counted(m_words.joined(numbers(address.valueForKey(kABAddressZIPKey))));
        if (!trait.letterPairs.empty() || trait.city != 0 || trait.zip != 0)
            addresses.push_back(std::move(trait));
    }

    quint32 streetWord(quint32 word)
    {
        const std::string &form = m_words[word].form;
        if (form.size() > 5 && form.ends_with("str"))
            return m_words.numbers(QString::fromStdString(form + "asse")).front();
        return m_streets.value(word, word);
    }

    static std::string leadingNumber(const std::string &text)
    {
        return text.substr(0, text.find_first_not_of("0123456789"));
    }

    Vocabulary &m_words;
    QSet<quint32> m_titles =
        setOf("dr sr prof professor mr mrs ms miss mister herr frau hr fr mag ing dipl doctor doktor "
              "sir rev reverend mme mlle monsieur madame sra srta sig signor signora dott "
              "drs capt captain phd md mba msc bsc esq");
    QSet<quint32> m_particles =
        setOf("van von de der den del della di da do dos das du la le el al bin ibn ter ten zu zur vom");
    QSet<quint32> m_legalForms = setOf("gmbh inc incorporated llc ltd limited ag co corp corporation company kg ohg ug "
                                       "ev sa srl sarl spa sl bv nv ab as oy plc pty se kk und and the");
    QHash<quint32, NameSuffix> m_suffixes;
    QHash<quint32, quint32> m_streets; // in full, by how they are shortened
};

/// Notes at each value how many people seem to have it: of its holders those whose names exclude each other.
void countSharers(BookTraits &book)
{
    constexpr std::size_t kMany = 32;
    struct Holder
    {
        quint64 hash;
        quint64 rank;
        quint32 contact;
        ValueTrait *value;
    };
    std::vector<Holder> holders;
    for (quint32 i = 0; i < book.contacts.size(); ++i) {
        for (ValueTrait &value : book.contacts[i].values)
            holders.push_back({value.hash, book.contacts[i].rank, i, &value});
    }
    std::ranges::sort(holders, {}, [](const Holder &holder) { return std::pair(holder.hash, holder.rank); });
    std::vector<const Traits *> people;
    for (auto begin = holders.begin(); begin != holders.end();) {
        const auto end = std::find_if(begin, holders.end(), [&](const Holder &h) { return h.hash != begin->hash; });
        people.clear();
        for (auto holder = begin; end - begin > 1 && holder != end && people.size() < kMany; ++holder) {
            const Traits &contact = book.contacts[holder->contact];
            if (std::ranges::none_of(people, [&](const Traits *other) { return mayShareName(contact, *other, book); }))
                people.push_back(&contact);
        }
        for (; begin != end; ++begin)
            begin->value->sharers = std::max(1, static_cast<int>(people.size()));
    }
}

} // namespace

double BookTraits::rarity(quint32 word, double most) const
{
    constexpr double kOthersElsewhere = 200; // keeps a small book from calling everything rare
    const double bits =
        std::log2((static_cast<double>(contacts.size()) + kOthersElsewhere) / (words[word].contacts + 1));
    return std::clamp(bits, 0.0, most);
}

BookTraits traitsOf(std::span<const PersonSnapshot> people, const QString &region, const LikenessProgress &progress)
{
    BookTraits book;
    std::vector<std::vector<PhoneLine>> lines;
    const auto read = [&](const LikenessProgress &go) {
        Reader reader(book.words);
        for (const PersonSnapshot &person : people) {
            if (!go(static_cast<double>(book.contacts.size()) / static_cast<double>(people.size())))
                return;
            book.contacts.push_back(reader.read(*person.record));
            book.contacts.back().rank = std::hash<std::u16string>()(person.person->uniqueId().toStdU16String());
        }
    };
    inTwoThreads(progress, read, [&](const LikenessProgress &go) { lines = phoneLines(people, region, go); });
    if (book.contacts.size() < people.size())
        return book;
    for (std::size_t i = 0; i < people.size(); ++i) {
        for (const PhoneLine &line : lines[i])
            book.contacts[i].values.push_back({ValueKind::Phone, line.use, line.extension, line.number});
    }
    countSharers(book);
    return book;
}
