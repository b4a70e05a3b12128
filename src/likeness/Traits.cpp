// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "likeness/Traits.h"

#include "likeness/Nicknames.h"

#include <QSet>

#include <algorithm>
#include <array>
#include <compare>
#include <iterator>
#include <tuple>
#include <unordered_set>

namespace {

using Words = std::vector<std::string>;

/// These words as forms.
std::unordered_set<std::string> setOf(const char *words)
{
    const Words forms = wordForms(QString::fromLatin1(words));
    return {forms.begin(), forms.end()};
}

bool isTitle(const std::string &word)
{
    static const auto titles =
        setOf("dr prof professor mr mrs ms miss mister herr frau hr fr mag ing dipl doctor doktor "
              "sir rev reverend mme mlle monsieur madame sra srta sig signor signora dott "
              "drs capt captain phd md mba msc bsc esq");
    return titles.contains(word);
}

bool isParticle(const std::string &word)
{
    static const auto particles =
        setOf("van von de der den del della di da do dos das du la le el al bin ibn ter ten zu zur vom");
    return particles.contains(word);
}

bool isLegalForm(const std::string &word)
{
    static const auto forms = setOf("gmbh inc incorporated llc ltd limited ag co corp corporation company kg ohg ug ev "
                                    "sa srl sarl spa sl bv nv ab as oy plc pty se kk und and the");
    return forms.contains(word);
}

NameSuffix suffixOf(const std::string &word)
{
    static constexpr std::array<std::pair<std::string_view, NameSuffix>, 9> kSuffixes{
        {{"jr", NameSuffix::Junior}, {"junior", NameSuffix::Junior}, {"jun", NameSuffix::Junior},
            {"sr", NameSuffix::Senior}, {"senior", NameSuffix::Senior}, {"sen", NameSuffix::Senior},
            {"i2", NameSuffix::Second}, {"i3", NameSuffix::Third}, {"iv", NameSuffix::Fourth}}};
    const auto row = std::ranges::find(kSuffixes, word, &std::pair<std::string_view, NameSuffix>::first);
    return row == kSuffixes.end() ? NameSuffix::None : row->second;
}

/// The words of a text; Roman numbers are kept from becoming a single "i".
Words nameWords(const QString *text)
{
    if (!text)
        return {};
    QString spelled = *text;
    for (const auto &[roman, sign] : {std::pair{u" III", u" i3"}, std::pair{u" II", u" i2"}}) {
        if (spelled.endsWith(QStringView(roman)))
            spelled = spelled.chopped(QStringView(roman).size()) + QStringView(sign).toString();
    }
    return wordForms(spelled);
}

/// Takes titles out, and a suffix from the end.
void clean(Words &words, NameSuffix &suffix)
{
    if (words.size() > 1 && suffixOf(words.back()) != NameSuffix::None) {
        suffix = suffixOf(words.back());
        words.pop_back();
    }
    Words rest;
    std::ranges::remove_copy_if(words, std::back_inserter(rest), isTitle);
    words = std::move(rest);
}

struct NameTexts
{
    Words given;
    Words middle;
    Words family;
};

/// Both names of @p words, which stood in one field.
NameTexts splitWhole(const Words &words)
{
    const auto particle = std::find_if(words.begin() + 1, words.end() - 1, isParticle);
    return {{words.front()}, {words.begin() + 1, particle}, {particle, words.end()}};
}

NameTexts nameTexts(const PersonRecord &record, NameSuffix &suffix)
{
    const QString *first = record.text(kABFirstNameProperty);
    const QString *last = record.text(kABLastNameProperty);
    const bool hasFirst = first && !first->isEmpty();
    const bool hasLast = last && !last->isEmpty();
    NameTexts texts{nameWords(first), nameWords(record.text(kABMiddleNameProperty)), nameWords(last)};
    const QString *const only = hasFirst == hasLast ? nullptr : hasFirst ? first : last;
    if (const qsizetype comma = only ? only->indexOf(u',') : -1; comma > 0) {
        const QString before = only->left(comma);
        const QString behind = only->mid(comma + 1);
        const Words rest = nameWords(&behind);
        if (!(rest.size() == 1 && suffixOf(rest.front()) != NameSuffix::None)) { // not "Martin King, Jr."
            texts.family = nameWords(&before);
            texts.given = rest;
        }
    }
    if (const QString *const text = record.text(kABSuffixProperty)) {
        const QString spaced = u' ' % *text;
        for (const std::string &word : nameWords(&spaced))
            suffix = suffixOf(word) == NameSuffix::None ? suffix : suffixOf(word);
    }
    clean(texts.given, suffix);
    clean(texts.family, suffix);
    if (texts.family.empty() != texts.given.empty()) {
        const Words &all = texts.family.empty() ? texts.given : texts.family;
        if (all.size() > 1) {
            NameTexts split = splitWhole(all);
            split.middle.insert(split.middle.end(), texts.middle.begin(), texts.middle.end());
            return split;
        }
    }
    return texts;
}

Words withoutParticles(const Words &words)
{
    Words rest;
    std::ranges::remove_copy_if(words, std::back_inserter(rest), isParticle);
    return rest.empty() ? words : rest;
}

std::string joined(const Words &words)
{
    std::string text;
    for (const std::string &word : words)
        text += word;
    return text;
}

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
    return offices.contains(local) || local == host.section(u'.', 0, 0);
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
    explicit Reader(Vocabulary &words) : m_words(words) { }

    Traits read(const PersonRecord &record, const std::vector<PhoneLine> &lines)
    {
        Traits traits;
        traits.birthday = record.birthday().value_or(QDate());
        readName(record, traits);
        readValues(record, lines, traits.values);
        if (const ABMultiValue *const addresses = record.multiValue(kABAddressProperty)) {
            for (const auto &entry : addresses->entries())
                readAddress(entry.dictionary(), traits.addresses);
        }
        return traits;
    }

private:
    std::vector<quint32> numbers(const Words &words)
    {
        std::vector<quint32> numbers;
        for (const std::string &word : words)
            numbers.push_back(m_words.number(word));
        return numbers;
    }

    NamePart part(const Words &words) { return {numbers(words), counted(joined(words))}; }

    quint32 counted(const std::string &word)
    {
        const quint32 number = m_words.number(word);
        m_words.count(number);
        return number;
    }

    void readName(const PersonRecord &record, Traits &traits)
    {
        NameTraits &name = traits.name;
        NameTexts texts = nameTexts(record, name.suffix);
        Words company;
        if (const QString *const organization = record.text(kABOrganizationProperty)) {
            const Words words = wordForms(*organization);
            std::ranges::remove_copy_if(words, std::back_inserter(company), isLegalForm);
            traits.company = counted(joined(company));
        }
        traits.isCompany = traits.company != 0
            && (record.flags() == kABShowAsCompany || (texts.given.empty() && texts.family.empty()));
        if (traits.isCompany)
            return;
        texts.family = withoutParticles(texts.family);
        name.given = part(texts.given);
        name.middle = numbers(texts.middle);
        for (const ABProperty property : {kABFirstNameProperty, kABLastNameProperty}) {
            if (const QString *const text = record.text(property))
                name.spelling = qHash(*text, name.spelling);
        }
        name.family = part(texts.family);
        name.nicknames = numbers(nameWords(record.text(kABNicknameProperty)));
        name.maiden = numbers(withoutParticles(nameWords(record.text(kABMaidenNameProperty))));
        if (name.given.words.size() > 1)
            m_words.count(name.given.words.front());
    }

    static void readValues(
        const PersonRecord &record, const std::vector<PhoneLine> &lines, std::vector<ValueTrait> &values)
    {
        for (const PhoneLine &line : lines)
            values.push_back({ValueKind::Phone, line.use, line.extension, line.number});
        if (const ABMultiValue *const emails = record.multiValue(kABEmailProperty)) {
            for (const auto &entry : emails->entries()) {
                if (entry.text().contains(u'@'))
                    values.push_back(emailTrait(entry.text()));
            }
        }
        readAccounts(record.multiValue(kABInstantMessageProperty), kABInstantMessageServiceKey,
            kABInstantMessageUsernameKey, values);
        readAccounts(record.multiValue(kABSocialProfileProperty), kABSocialProfileServiceKey,
            kABSocialProfileUsernameKey, values);
        if (const QByteArray *const picture = record.imageData())
            values.push_back(
                {.kind = ValueKind::Picture, .hash = qHashBits(picture->data(), size_t(picture->size()), 1)});
        const auto order = [](const ValueTrait &value) { return std::tuple(value.kind, value.hash, value.extension); };
        std::ranges::sort(values, {}, order);
    }

    static void readAccounts(const ABMultiValue *accounts, ABKey service, ABKey name, std::vector<ValueTrait> &values)
    {
        if (!accounts)
            return;
        for (const auto &entry : accounts->entries()) {
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

    static std::string streetWord(const std::string &word)
    {
        static constexpr std::array<std::pair<std::string_view, const char *>, 9> kShort{
            {{"st", "stret"}, {"str", "strase"}, {"av", "avenu"}, {"ave", "avenu"}, {"rd", "road"}, {"dr", "drive"},
                {"pl", "place"}, {"ln", "lane"}, {"blvd", "boulevard"}}};
        const auto row = std::ranges::find(kShort, word, &std::pair<std::string_view, const char *>::first);
        if (row != kShort.end())
            return row->second;
        return word.size() > 5 && word.ends_with("str") ? word + "ase" : word;
    }

    void readAddress(const ABDictionary &address, std::vector<AddressTrait> &addresses)
    {
        const auto words = [&](ABKey key) {
            const QString *const text = address.valueForKey(key);
            return text ? wordForms(*text) : Words();
        };
        AddressTrait trait;
        Words streetWords;
        for (const std::string &word : words(kABAddressStreetKey)) {
            if (std::ranges::any_of(word, [](char c) { return c >= '0' && c <= '9'; })) {
                if (trait.number == 0)
                    trait.number = m_words.number(word.substr(0, word.find_first_not_of("0123456789")));
            } else {
                streetWords.push_back(streetWord(word));
            }
        }
        const std::string street = joined(streetWords);
        for (std::size_t i = 1; i < street.size(); ++i)
            trait.letterPairs.push_back(static_cast<quint16>((street[i - 1] << 8) | street[i]));
        std::ranges::sort(trait.letterPairs);
        std::ranges::stable_sort(streetWords, std::greater(), [](const std::string &word) { return word.size(); });
        trait.streetWords = numbers(streetWords);
        trait.city = counted(joined(words(kABAddressCityKey)));
        trait.zip = m_words.number(joined(words(kABAddressZIPKey)));
        if (!trait.letterPairs.empty() || trait.city != 0 || trait.zip != 0)
            addresses.push_back(std::move(trait));
    }

    Vocabulary &m_words;
};

/// One number for all forms of a first name; 0 for none and for initials.
quint32 calledBy(const Traits &contact, Vocabulary &words)
{
    if (contact.isCompany)
        return contact.company;
    if (contact.name.given.words.empty())
        return 0;
    const Vocabulary::Word &word = words.word(contact.name.given.words.front());
    if (word.form.size() == 1)
        return 0;
    return words.number(word.nicknameRows ? headOfNicknameRow(word.nicknameRows->front()) : word.sound);
}

/// Notes at each value how many different people seem to have it.
void countSharers(BookTraits &book)
{
    struct Holder
    {
        quint64 hash;
        quint32 name;
        auto operator<=>(const Holder &) const = default;
    };
    std::vector<Holder> holders;
    for (const Traits &contact : book.contacts) {
        if (const quint32 name = calledBy(contact, book.words)) {
            for (const ValueTrait &value : contact.values)
                holders.push_back({value.hash, name});
        }
    }
    std::ranges::sort(holders);
    holders.erase(std::unique(holders.begin(), holders.end()), holders.end());
    for (Traits &contact : book.contacts) {
        for (ValueTrait &value : contact.values) {
            const auto first = std::ranges::lower_bound(holders, value.hash, {}, &Holder::hash);
            const auto last = std::ranges::upper_bound(holders, value.hash, {}, &Holder::hash);
            value.sharers = std::max(1, static_cast<int>(last - first));
        }
    }
}

} // namespace

BookTraits traitsOf(std::span<const PersonSnapshot> people, const QString &region, const LikenessProgress &progress)
{
    constexpr std::size_t kStep = 1024;
    BookTraits book;
    const auto lines = phoneLines(people, region);
    Reader reader(book.words);
    for (std::size_t i = 0; i < people.size(); ++i) {
        if (i % kStep == 0 && !progress(static_cast<double>(i) / static_cast<double>(people.size())))
            return book;
        book.contacts.push_back(reader.read(*people[i].record, lines[i]));
    }
    std::vector<quint32> byUid(people.size());
    for (quint32 i = 0; i < byUid.size(); ++i)
        byUid[i] = i;
    std::ranges::sort(byUid, {}, [&](quint32 i) -> const QString & { return people[i].person->uniqueId(); });
    for (quint32 rank = 0; rank < byUid.size(); ++rank)
        book.contacts[byUid[rank]].rank = rank;
    countSharers(book);
    return book;
}
