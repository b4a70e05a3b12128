// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
// Reading and writing of the lines that name messaging accounts and social profiles.
#include "contacts/cards/CardFields.h"
#include "contacts/model/ABLabels.h"

#include <map>

namespace {

constexpr std::string_view kNeutralScheme = "x-apple";

QString serviceText(std::string_view word)
{
    const CardService *known = serviceOfWord(word);
    return known ? *known->service : textOfUtf8(word);
}

bool add(CardDraft &draft, const CardLine &line, const QString &service, const QString &username)
{
    const bool isProfile = line.area() == areaOf(kABSocialProfileProperty);
    ABDictionary account;
    if (!service.isEmpty())
        account.setValue(service, isProfile ? kABSocialProfileServiceKey : kABInstantMessageServiceKey);
    if (!username.isEmpty())
        account.setValue(username, isProfile ? kABSocialProfileUsernameKey : kABInstantMessageUsernameKey);
    const TypeLabel *place = labelOfTypes(propertyOf(line.area()), line.types);
    // The program shows profiles under the label for home only.
    const QString *assumed = isProfile ? &kABHomeLabel : nullptr;
    draft.addEntry(line, place ? &place->label : assumed, std::move(account), true);
    return true;
}

/// The first word of TYPE that is not about the place.
QString networkOfTypes(const CardLine &line)
{
    constexpr unsigned params = CardParam::Bare | CardParam::Type | CardParam::ServiceType;
    const std::string_view word = findWord(line, params, isFreeWord);
    const QString *known = socialService(word);
    return known ? *known : word.empty() ? QString() : textOfUtf8(word);
}

/// The network whose site the address is on: the label before the top-level domain.
QString networkOfAddress(std::string_view address)
{
    const std::size_t host = address.find("://");
    if (host == std::string_view::npos)
        return {};
    address.remove_prefix(host + 3);
    address = address.substr(0, address.find_first_of("/?#:"));
    const std::size_t top = address.rfind('.');
    if (top == std::string_view::npos)
        return {};
    address = address.substr(0, top);
    const QString *known = socialService(address.substr(address.rfind('.') + 1));
    return known ? *known : QString();
}

/// The account name inside a profile's address: its last part; all of a text that is no address.
std::string_view userOfAddress(std::string_view address)
{
    while (address.ends_with('/'))
        address.remove_suffix(1);
    return address.find("://") == std::string_view::npos ? address : address.substr(address.rfind('/') + 1);
}

std::string accountValue(std::string_view scheme, const QString *username)
{
    std::string value(scheme);
    return value.append(":").append(username ? escaped(*username, Escapes::OnlyBackslashAndNewline) : std::string());
}

/// @p text as a parameter value of vCard 3.0; empty where that cannot hold it.
std::string paramOf(const QString &text)
{
    if (breaksParam(text))
        return {};
    const auto needsQuotes = [](QChar c) { return c == u':' || c == u';' || c == u',' || c.isSpace(); };
    return (std::ranges::any_of(text, needsQuotes) ? QString(u'"' % text % u'"') : text).toStdString();
}

} // namespace

bool readInstantMessage(CardDraft &draft, const CardLine &line)
{
    if (line.value.empty())
        return true;
    const std::string word = draft.paramText(line, "X-SERVICE-TYPE");
    std::string_view username = line.value;
    const std::string_view scheme = takeScheme(username);
    const bool isNeutral = equalsIgnoringCase(scheme, kNeutralScheme);
    if (word.empty())
        return add(draft, line, isNeutral ? QString() : serviceText(scheme), unescaped(username));
    const bool belongs = isNeutral || serviceOfWord(scheme) || equalsIgnoringCase(scheme, word);
    return add(draft, line, serviceText(word), unescaped(belongs ? username : line.value));
}

bool readAccount(CardDraft &draft, const CardLine &line)
{
    if (line.value.empty())
        return true;
    draft.hasAccountLines = true;
    constexpr std::string_view extensionMark = "X-";
    return add(draft, line, serviceText(line.name.substr(extensionMark.size())), unescaped(line.value));
}

bool readSocialProfile(CardDraft &draft, const CardLine &line)
{
    if (line.value.empty())
        return true;
    const std::string user = draft.paramText(line, "X-USER");
    std::string_view address = line.value;
    QString network = networkOfTypes(line);
    std::string_view rest = address;
    const std::string_view scheme = takeScheme(rest);
    const QString *ofScheme = socialService(scheme);
    if (ofScheme || equalsIgnoringCase(scheme, kNeutralScheme))
        address = rest;
    if (network.isEmpty())
        network = ofScheme ? *ofScheme : networkOfAddress(address);
    return add(draft, line, network, user.empty() ? unescaped(userOfAddress(address)) : textOfUtf8(user));
}

bool readTwitter(CardDraft &draft, const CardLine &line)
{
    return line.value.empty() || add(draft, line, kABSocialProfileServiceTwitter, unescaped(userOfAddress(line.value)));
}

void mergeAccounts(CardDraft &draft)
{
    auto &entries = draft.entries(kABInstantMessageProperty);
    if (!draft.hasAccountLines || entries.size() < 2)
        return;
    // The first entries, by their accounts and whether they are from a line such as X-AIM.
    std::map<std::pair<QString, bool>, std::size_t> firsts;
    std::vector<ABMultiValue::Entry> merged;
    for (CardDraft::Source &source : draft.sources) { // each entry has one
        if (source.line->area() != areaOf(kABInstantMessageProperty))
            continue;
        ABMultiValue::Entry &entry = entries[source.entry];
        const auto part = [&entry](ABKey key) {
            const QString *text = entry.dictionary().valueForKey(key);
            return text ? text->toCaseFolded() : QString();
        };
        const QString account = part(kABInstantMessageServiceKey) % u'\n' % part(kABInstantMessageUsernameKey);
        const bool isOfService = source.line->row->read == readAccount;
        const auto same = firsts.find({account, !isOfService});
        if (same == firsts.end()) {
            source.entry = merged.size();
            firsts.try_emplace({account, isOfService}, merged.size());
            merged.push_back(std::move(entry));
            continue;
        }
        source.entry = same->second;
        if (merged[same->second].label.isNull())
            merged[same->second].label = entry.label;
    }
    entries = std::move(merged);
}

bool writeAccount(const CardRow &row, const ABMultiValue::Entry &entry, CardUnits &units)
{
    const QString *service = entry.dictionary().valueForKey(kABInstantMessageServiceKey);
    const QString *username = entry.dictionary().valueForKey(kABInstantMessageUsernameKey);
    const CardService *known = service ? serviceOfText(*service) : nullptr;
    const std::string word = known ? std::string(known->word) : service ? paramOf(*service) : std::string();
    const std::string value = accountValue(known ? known->scheme : kNeutralScheme, username);
    units.push_back(entryUnit(row, entry.label, word.empty() ? word : ";X-SERVICE-TYPE=" + word, value));
    return known && username;
}

bool writeProfile(const CardRow &row, const ABMultiValue::Entry &entry, CardUnits &units)
{
    const QString *service = entry.dictionary().valueForKey(kABSocialProfileServiceKey);
    const QString *username = entry.dictionary().valueForKey(kABSocialProfileUsernameKey);
    const std::string network = service ? service->toStdString() : std::string();
    const std::string word = service && isFreeWord(network) ? paramOf(*service) : std::string();
    const std::string user = username ? paramOf(*username) : std::string();
    std::string params;
    if (!word.empty())
        params.append(";TYPE=").append(word);
    if (!user.empty())
        params.append(";X-USER=").append(user);
    const bool isAssumed = entry.label == kABHomeLabel; // by a reader
    units.push_back(
        entryUnit(row, isAssumed ? QString() : entry.label, params, accountValue(kNeutralScheme, username)));
    const QString *known = socialService(network);
    return !entry.label.isNull() && known && *known == *service && username && !breaksParam(*username)
        && !username->contains(u'^');
}
