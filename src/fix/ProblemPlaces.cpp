// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/ProblemPlaces.h"

#include "contacts/model/ABLabels.h"
#include "contacts/model/NameTexts.h"
#include "contacts/model/RecordDifferences.h"
#include "fix/MergeContacts.h"

#include <algorithm>

namespace {

using Places = std::vector<ProblemPlace>;

QString withLabel(ABProperty property, const QString &label)
{
    const QString title = propertyTitle(property);
    return label.isEmpty() ? title : QString(title % QStringLiteral(" (") % readableLabel(label) % u')');
}

template <typename IsWrong> QList<qsizetype> lettersOf(const QString &text, IsWrong isWrong)
{
    QList<qsizetype> places;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (isWrong(text[i]))
            places += i;
    }
    return places;
}

/// One text of the person, with the letters that are wrong in it.
template <typename IsWrong> Places inText(const PersonRecord &record, ABProperty property, IsWrong isWrong)
{
    const QString *text = record.text(property);
    if (!text)
        return {};
    return {{propertyTitle(property), *text, lettersOf(*text, isWrong),
        text->isEmpty() ? QStringLiteral("empty") : QString()}};
}

bool isBlank(QChar letter)
{
    return letter == u' ';
}

bool isAny(QChar)
{
    return true;
}

Places invalidCharacters(const PersonRecord &record)
{
    Places places;
    for (const auto &entry : record.entries(kABEmailProperty)) {
        QStringList missing;
        for (const QLatin1StringView part : {QLatin1StringView("@"), QLatin1StringView(".com")}) {
            if (!entry.text().contains(part))
                missing += u'"' % QString(part) % u'"';
        }
        if (!missing.isEmpty())
            places.push_back({withLabel(kABEmailProperty, entry.label), entry.text(), {},
                QStringLiteral("without ") % missing.join(QStringLiteral(" and "))});
    }
    for (const auto &entry : record.entries(kABPhoneProperty)) {
        const auto isLetter = [](QChar c) { return c.unicode() < 0x80 && c.isLetter(); };
        if (const auto wrong = lettersOf(entry.text(), isLetter); !wrong.isEmpty())
            places.push_back({withLabel(kABPhoneProperty, entry.label), entry.text(), wrong});
    }
    return places;
}

Places repeatedValues(const PersonRecord &record, ABProperty property)
{
    Places places;
    const auto entries = record.entries(property);
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        const auto isEqual = [&](const ABMultiValue::Entry &other) { return other.value == entry->value; };
        if (std::any_of(entries.begin(), entry, isEqual) || std::count_if(entry, entries.end(), isEqual) < 2)
            continue;
        QStringList labels;
        for (auto other = entry; other != entries.end(); ++other) {
            if (isEqual(*other))
                labels += other->label.isEmpty() ? QStringLiteral("no label") : readableLabel(other->label);
        }
        places.push_back({propertyTitle(property), valueText(entry->value), {},
            QString::number(labels.size()) % QStringLiteral(" times: ") % labels.join(QStringLiteral(", "))});
    }
    return places;
}

Places sharedAddress(const Finding &finding)
{
    QStringList names;
    for (const ABPersonPtr &other : finding.duplicateEmailArray) {
        const QString name = readableName(*other->record());
        if (!other->isRemoved())
            names += name.isEmpty() ? QStringLiteral("a contact without a name") : name;
    }
    return {{withLabel(kABEmailProperty, finding.duplicateEmailType), finding.sharedAddress, {},
        QStringLiteral("also of ") % names.join(QStringLiteral(", "))}};
}

/// For each property in which they differ what each of them has.
Places differences(const QList<ABPersonPtr> &people)
{
    constexpr qsizetype kMostLetters = 60;
    Places places;
    for (const ABPropertyInfo &info : allProperties()) {
        QStringList texts;
        for (const ABPersonPtr &person : people) {
            const QString text = valueText(person->record()->value(info.property)).simplified();
            texts += text.isEmpty()          ? QStringLiteral("–")
                : text.size() > kMostLetters ? QString(text.left(kMostLetters) % QStringLiteral("…"))
                                             : text;
        }
        if (texts.count(texts.value(0)) < texts.size())
            places.push_back({propertyTitle(info.property), texts.join(QStringLiteral(" | "))});
    }
    if (people.size() > 1)
        places.insert(places.begin(),
            {QString::number(people.size()) % QStringLiteral(" contacts with this name"),
                places.empty() ? QStringLiteral("the same in everything but the picture")
                               : QStringLiteral("they differ in:")});
    return places;
}

Places missingName(const PersonRecord &record)
{
    Places places;
    for (const ABProperty property : {kABFirstNameProperty, kABLastNameProperty}) {
        if (!record.text(property))
            places.push_back({propertyTitle(property), {}, {}, QStringLiteral("missing")});
    }
    return places;
}

} // namespace

std::vector<ProblemPlace> problemPlaces(const Finding &finding)
{
    const PersonRecordPtr record = finding.person->record();
    switch (finding.condition) {
    case Condition::SingleName:
    case Condition::BlankName:
        return missingName(*record);
    case Condition::DupAddress:
        return repeatedValues(*record, kABAddressProperty);
    case Condition::DupPhone:
        return repeatedValues(*record, kABPhoneProperty);
    case Condition::DupEmail:
        return repeatedValues(*record, kABEmailProperty);
    case Condition::InvalidChar:
        return invalidCharacters(*record);
    case Condition::SpaceInFirstName:
        return inText(*record, kABFirstNameProperty, isBlank);
    case Condition::EmptyNotes:
        return inText(*record, kABNoteProperty, isBlank);
    case Condition::EmptyNickname:
        return inText(*record, kABNicknameProperty, isBlank);
    case Condition::UnusualTitle:
        return inText(*record, kABTitleProperty, isAny);
    case Condition::UnusualSuffix:
        return inText(*record, kABSuffixProperty, isAny);
    case Condition::ShareEmail:
        return sharedAddress(finding);
    case Condition::DuplicateContacts:
        return differences(peopleNamedLike(*finding.person));
    }
    return {};
}
