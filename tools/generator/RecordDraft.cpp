// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "generator/RecordDraft.h"

#include "contacts/model/ABLabels.h"

namespace {

using Texts = std::vector<QString>;

const Texts &titles()
{
    static const Texts texts{QStringLiteral("Dr"), QStringLiteral("Mr"), QStringLiteral("Mrs"), QStringLiteral("Ms"),
        QStringLiteral("Prof")};
    return texts;
}

const Texts &unusualTitles()
{
    static const Texts texts{QStringLiteral("Dr."), QStringLiteral("MR"), QStringLiteral("Mister"),
        QStringLiteral("Herr"), QStringLiteral("Prof."), QStringLiteral("Mrs."), QStringLiteral("mR"),
        QStringLiteral("Ms "), QStringLiteral("Señora"), QStringLiteral("Madam")};
    return texts;
}

const Texts &suffixes()
{
    static const Texts texts{QStringLiteral("Jr"), QStringLiteral("Sr"), QStringLiteral("II"), QStringLiteral("PhD")};
    return texts;
}

const Texts &unusualSuffixes()
{
    static const Texts texts{QStringLiteral("Jr."), QStringLiteral("Esq."), QStringLiteral("Ph.D."),
        QStringLiteral("sR"), QStringLiteral("Junior."), QStringLiteral("PHD"), QStringLiteral("Sr ")};
    return texts;
}

const Texts &relationLabels()
{
    static const Texts labels{kABSpouseLabel, kABMotherLabel, kABFatherLabel, kABSisterLabel, kABBrotherLabel,
        kABChildLabel, kABFriendLabel, kABPartnerLabel, kABAssistantLabel, kABManagerLabel};
    return labels;
}

const Texts &messageServices()
{
    static const Texts services{kABInstantMessageServiceJabber, kABInstantMessageServiceSkype,
        kABInstantMessageServiceAIM, kABInstantMessageServiceICQ, kABInstantMessageServiceYahoo};
    return services;
}

const Texts &socialServices()
{
    static const Texts services{kABSocialProfileServiceTwitter, kABSocialProfileServiceFacebook,
        kABSocialProfileServiceLinkedIn, kABSocialProfileServiceFlickr};
    return services;
}

const Texts &phoneLabels()
{
    static const Texts labels{kABPhoneMobileLabel, kABPhoneWorkLabel, kABPhoneHomeLabel, kABPhoneMobileLabel,
        kABPhoneMainLabel, kABPhoneiPhoneLabel, kABPhoneWorkFAXLabel, kABOtherLabel};
    return labels;
}

constexpr quint32 kEmailsAtMost = 2;

/// The number in front of the host is one of its own for every address of a run, and hosts hold no digits: so no two
/// addresses are equal, however they are put together.
QString emailNumber(qint64 index, quint32 ordinal)
{
    return QString::number(index * kEmailsAtMost + ordinal);
}

/// Depends on nothing but its arguments, so that others can be given the same address.
QString emailAddress(const Name &name, qint64 index, quint32 ordinal)
{
    SplitMix64 random(mixBits(static_cast<quint64>(index) * kEmailsAtMost + ordinal));
    const QString &host = random.pick(ordinal == 0 ? commonWords().homeHosts : commonWords().workHosts);
    const bool hasBoth = !name.asciiFirst.isEmpty() && !name.asciiLast.isEmpty();
    const auto separator = QLatin1StringView(!hasBoth ? "" : random.percent(70) ? "." : "_");
    const QString first = hasBoth && random.percent(25) ? name.asciiFirst.left(1) : name.asciiFirst;
    return first % separator % name.asciiLast % emailNumber(index, ordinal) % u'@' % host
        % QStringLiteral(".example.com");
}

QString capitalized(const QString &ascii)
{
    return ascii.left(1).toUpper() % ascii.mid(1);
}

} // namespace

RecordDraft::RecordDraft(const Name &name, qint64 index, SplitMix64 random)
    : m_name(name)
    , m_culture(*name.culture)
    , m_index(index)
    , m_random(random)
    , m_country(m_random.pick(m_culture.countries))
{
    addNames();
    addWork();
    addEmails();
    addPhones();
    addAddresses();
    addOnlineAccounts();
    addRelatedNames();
    addNotes();
}

void RecordDraft::makeCompany()
{
    m_record.setFlags(kABShowAsCompany);
    if (!m_record.text(kABOrganizationProperty))
        addOrganization();
}

void RecordDraft::takeEmailOf(const Name &name, qint64 index)
{
    m_emails.front().value = emailAddress(name, index, 0);
}

void RecordDraft::addFault(Condition condition)
{
    switch (condition) {
    case Condition::SingleName:
        // Only the exact value of a company excuses a missing name; 17 holds the same bit and another one.
        m_record.removeValue(kABPersonFlags);
        if (m_random.percent(30))
            m_record.setFlags(m_random.percent(50) ? 0 : 17);
        break;
    case Condition::BlankName:
        m_record.removeValue(kABFirstNameProperty);
        m_record.removeValue(kABLastNameProperty);
        break;
    case Condition::SpaceInFirstName: {
        const QString &second = m_random.pick(m_culture.firstNames).text;
        const Texts forms{m_name.first % u' ' % second, u' ' % m_name.first, m_name.first % u' '};
        m_record.setText(kABFirstNameProperty, m_random.pick(forms));
        break;
    }
    case Condition::UnusualTitle:
        m_record.setText(kABTitleProperty, m_random.pick(unusualTitles()));
        break;
    case Condition::UnusualSuffix:
        m_record.setText(kABSuffixProperty, m_random.pick(unusualSuffixes()));
        break;
    case Condition::EmptyNotes:
        m_record.setText(kABNoteProperty, QString(1 + m_random.below(5), u' '));
        break;
    case Condition::EmptyNickname:
        m_record.setText(kABNicknameProperty, QString(1 + m_random.below(3), u' '));
        break;
    case Condition::InvalidChar:
        addInvalidText();
        break;
    case Condition::DupEmail:
        repeatEntry(m_emails);
        break;
    case Condition::DupPhone:
        repeatEntry(m_phones);
        break;
    case Condition::DupAddress:
        if (m_addresses.empty())
            m_addresses.push_back({kABAddressHomeLabel, postalAddress(m_country, 0)});
        repeatEntry(m_addresses);
        break;
    case Condition::ShareEmail:
    case Condition::DuplicateContacts:
        break;
    }
}

PersonRecord RecordDraft::finish()
{
    m_record.setMultiValue(kABEmailProperty, ABMultiValue(std::move(m_emails)));
    m_record.setMultiValue(kABPhoneProperty, ABMultiValue(std::move(m_phones)));
    if (!m_addresses.empty())
        m_record.setMultiValue(kABAddressProperty, ABMultiValue(std::move(m_addresses)));
    return std::move(m_record);
}

void RecordDraft::addNames()
{
    const auto setUnlessNull = [this](ABProperty property, const QString &text) {
        if (!text.isNull())
            m_record.setText(property, text);
    };
    setUnlessNull(kABFirstNameProperty, m_name.first);
    setUnlessNull(kABLastNameProperty, m_name.last);
    if (m_culture.phonetic && m_random.percent(60)) {
        setUnlessNull(kABFirstNamePhoneticProperty, capitalized(m_name.asciiFirst));
        setUnlessNull(kABLastNamePhoneticProperty, capitalized(m_name.asciiLast));
    }
    if (m_random.percent(25))
        m_record.setText(kABMiddleNameProperty, m_random.pick(m_culture.firstNames).text);
    if (m_random.percent(4))
        m_record.setText(kABMaidenNameProperty, m_random.pick(m_culture.lastNames).text);
    if (m_random.percent(20))
        m_record.setText(kABNicknameProperty, m_random.pick(commonWords().nicknames));
    if (m_random.percent(30))
        m_record.setText(kABTitleProperty, m_random.pick(titles()));
    if (m_random.percent(8))
        m_record.setText(kABSuffixProperty, m_random.pick(suffixes()));
    if (m_random.percent(35))
        m_record.setBirthday(QDate{1935 + static_cast<int>(m_random.below(75)),
            1 + static_cast<int>(m_random.below(12)), 1 + static_cast<int>(m_random.below(28))});
}

void RecordDraft::addOrganization()
{
    QString organization = m_random.pick(m_culture.organizations);
    organization.replace(u'*', m_random.pick(m_culture.lastNames).text);
    m_record.setText(kABOrganizationProperty, organization);
}

void RecordDraft::addWork()
{
    if (m_random.percent(4))
        makeCompany();
    else if (m_random.percent(80))
        addOrganization();
    else
        return;
    if (m_random.percent(55))
        m_record.setText(kABDepartmentProperty, m_random.pick(m_culture.departments));
    if (m_random.percent(80))
        m_record.setText(kABJobTitleProperty, m_random.pick(m_culture.jobTitles));
}

void RecordDraft::addEmails()
{
    const quint32 count = m_random.percent(60) ? 2 : 1;
    m_emails.reserve(3);
    for (quint32 i = 0; i < count; ++i) {
        const QString where =
            i == 0 ? label(kABEmailHomeLabel, kABOtherLabel) : label(kABEmailWorkLabel, kABOtherLabel);
        m_emails.push_back({where, emailAddress(m_name, m_index, i)});
    }
}

void RecordDraft::addPhones()
{
    const quint32 count = m_random.percent(25) ? 1 : 2 + m_random.below(2);
    m_phones.reserve(4);
    for (quint32 i = 0; i < count; ++i) {
        const QString &where = m_random.pick(phoneLabels());
        m_phones.push_back({label(where, where), phoneNumber(m_country, i)});
    }
}

void RecordDraft::addAddresses()
{
    if (m_random.percent(30))
        return;
    m_addresses.push_back({label(kABAddressHomeLabel, kABAddressWorkLabel), postalAddress(m_country, 0)});
    if (m_random.percent(20)) {
        const Country &country = m_random.pick(m_culture.countries);
        m_addresses.push_back({label(kABAddressWorkLabel, kABOtherLabel), postalAddress(country, 1)});
    }
}

void RecordDraft::addOnlineAccounts()
{
    const QString account = m_name.asciiLast % m_name.asciiFirst % QString::number(m_random.below(1000));
    ABMutableMultiValue urls;
    if (m_random.percent(35)) {
        const QString host = m_random.pick(commonWords().workHosts) % QStringLiteral(".example.com");
        urls.addValue(QString(QStringLiteral("https://www.") % host % QStringLiteral("/~") % account),
            label(kABHomePageLabel, kABWorkLabel));
        if (m_random.percent(15))
            urls.addValue(QString(QStringLiteral("https://") % host), label(kABWorkLabel, kABOtherLabel));
        m_record.setMultiValue(kABURLsProperty, urls);
    }
    if (m_random.percent(25)) {
        ABMutableMultiValue accounts;
        const ABDictionary parts{
            {kABInstantMessageServiceKey, m_random.pick(messageServices())}, {kABInstantMessageUsernameKey, account}};
        accounts.addValue(parts, label(kABHomeLabel, kABWorkLabel));
        m_record.setMultiValue(kABInstantMessageProperty, accounts);
    }
    if (m_random.percent(35)) {
        ABMutableMultiValue profiles;
        const ABDictionary parts{
            {kABSocialProfileServiceKey, m_random.pick(socialServices())}, {kABSocialProfileUsernameKey, account}};
        profiles.addValue(parts, label(kABHomeLabel, kABWorkLabel));
        m_record.setMultiValue(kABSocialProfileProperty, profiles);
    }
}

void RecordDraft::addRelatedNames()
{
    if (m_random.percent(60))
        return;
    ABMutableMultiValue relatives;
    for (quint32 left = 1 + m_random.below(2); left > 0; --left) {
        const QString &first = m_random.pick(m_culture.firstNames).text;
        const QString &last = m_random.pick(m_culture.lastNames).text;
        const QString &relation = m_random.pick(relationLabels());
        relatives.addValue(QString(first % u' ' % last), label(relation, relation));
    }
    m_record.setMultiValue(kABRelatedNamesProperty, relatives);
}

void RecordDraft::addNotes()
{
    if (m_random.percent(55))
        return;
    const qsizetype atLeast = m_random.percent(50) ? 1 : 100 + m_random.below(200);
    QString note = m_random.pick(m_culture.notes);
    while (note.size() < atLeast)
        note += u' ' + m_random.pick(m_culture.notes);
    m_record.setText(kABNoteProperty, note);
}

void RecordDraft::addInvalidText()
{
    static const Texts phoneTails{
        QStringLiteral(" x7"), QStringLiteral(" ext. 12"), QStringLiteral("O"), QStringLiteral(" (evenings)")};
    const auto ordinal = static_cast<quint32>(m_emails.size() - 1);
    // Without a dot, a name cannot make up a ".com" in front of the host.
    const QString local = m_name.asciiLast % emailNumber(m_index, ordinal);
    const QString &host = m_random.pick(commonWords().workHosts);
    switch (m_random.below(3)) {
    case 0:
        m_emails.back().value = QString(local % host % QStringLiteral(".example.com"));
        break;
    case 1:
        m_emails.back().value = QString(local % u'@' % host % QStringLiteral(".example.org"));
        break;
    default:
        m_phones.back().value = QString(m_phones.back().text() % m_random.pick(phoneTails));
        break;
    }
}

void RecordDraft::repeatEntry(Entries &entries)
{
    ABMultiValue::Entry copy = m_random.pick(entries);
    if (m_random.percent(50))
        copy.label = m_random.pick(commonWords().customLabels);
    entries.push_back(std::move(copy));
}

QString RecordDraft::label(const QString &first, const QString &second)
{
    const quint32 chance = m_random.below(100);
    if (chance < 5)
        return m_random.pick(commonWords().customLabels);
    if (chance < 6)
        return {};
    return chance < 80 ? first : second;
}

QString RecordDraft::phoneNumber(const Country &country, quint32 ordinal)
{
    QString number = withDigits(m_random.pick(country.phonePatterns));
    // Only the ordinal decides whether the last digit is 0 to 2, 3 to 5 or 6 to 8: all numbers of a contact differ.
    number.back() = QChar(u'0' + static_cast<char16_t>(3 * ordinal + m_random.below(3)));
    return number;
}

ABDictionary RecordDraft::postalAddress(const Country &country, quint32 ordinal)
{
    const Place &place = m_random.pick(country.places);
    // The two addresses of a contact differ, as one has an even and the other an odd number.
    const quint32 house = 2 * (1 + m_random.below(99)) + ordinal;
    QString street = m_random.pick(m_culture.streets);
    street.replace(u'*', QString::number(house));
    ABDictionary address{{kABAddressStreetKey, street}, {kABAddressCityKey, place.city},
        {kABAddressZIPKey, withDigits(place.zipPattern)}, {kABAddressCountryKey, country.name},
        {kABAddressCountryCodeKey, country.code}};
    if (!place.state.isNull())
        address.setValue(place.state, kABAddressStateKey);
    return address;
}

QString RecordDraft::withDigits(const QString &pattern)
{
    QString text = pattern;
    quint64 digits = m_random.next();
    for (QChar &letter : text) {
        if (letter != u'#' && letter != u'%')
            continue;
        const quint64 lowest = letter == u'%' ? 2 : 0;
        letter = QChar(static_cast<char16_t>(u'0' + lowest + digits % (10 - lowest)));
        digits /= 10;
    }
    return text;
}
