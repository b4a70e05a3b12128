// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/SameValues.h"

#include <algorithm>

namespace {

/// Letters and digits alone, in one case.
QString lettersOf(const QString &text)
{
    QString letters;
    for (const QChar character : text.normalized(QString::NormalizationForm_KC).toCaseFolded()) {
        if (character.isLetterOrNumber() || character.isMark() || character.isSurrogate())
            letters += character;
    }
    return letters;
}

QString withoutScheme(QString address)
{
    for (const QLatin1StringView scheme : {QLatin1StringView("https://"), QLatin1StringView("http://")}) {
        if (address.startsWith(scheme))
            address.remove(0, scheme.size());
    }
    return address.endsWith(QLatin1Char('/')) ? address.chopped(1) : address;
}

/// A phone number's digits, as they are dialled from abroad or from within the country.
struct Digits
{
    QString text;
    bool isInternational = false;
};

/// Nothing for a number with letters: an extension or a word is part of it.
std::optional<Digits> digitsOf(const QString &number)
{
    Digits digits;
    for (const QChar character : number) {
        if (character.isDigit())
            digits.text += QChar(u'0' + character.digitValue());
        else if (character.isLetter() || character == QLatin1Char('#') || character == QLatin1Char('*'))
            return std::nullopt;
        else if (character == QLatin1Char('+') && digits.text.isEmpty())
            digits.isInternational = true;
    }
    if (!digits.isInternational && digits.text.startsWith(QLatin1String("00"))) {
        digits.isInternational = true;
        digits.text.remove(0, 2);
    }
    return digits;
}

/// The same subscriber, where one number has a country code of up to three digits and the other may have a zero there.
bool isSameWithCountryCode(const Digits &international, const Digits &national)
{
    constexpr qsizetype kShortestSubscriber = 7; // shorter ones stand for somebody else in each town
    QString subscriber = national.text;
    if (subscriber.startsWith(QLatin1Char('0')))
        subscriber.remove(0, 1);
    const qsizetype codeLength = international.text.size() - subscriber.size();
    return subscriber.size() >= kShortestSubscriber && codeLength >= 1 && codeLength <= 3
        && international.text.endsWith(subscriber);
}

bool isSamePhone(const QString &a, const QString &b)
{
    const auto one = digitsOf(a);
    const auto other = digitsOf(b);
    if (!one || !other || one->text.isEmpty() || other->text.isEmpty())
        return lettersOf(a) == lettersOf(b);
    if (one->isInternational == other->isInternational)
        return one->text == other->text;
    return one->isInternational ? isSameWithCountryCode(*one, *other) : isSameWithCountryCode(*other, *one);
}

} // namespace

bool sayTheSame(ABProperty property, const QString &a, const QString &b)
{
    if (a == b)
        return true;
    if (a.isEmpty() || b.isEmpty())
        return false;
    switch (property) {
    case kABPhoneProperty:
        return isSamePhone(a, b);
    case kABEmailProperty:
        return a.trimmed().toCaseFolded() == b.trimmed().toCaseFolded();
    case kABURLsProperty:
        return withoutScheme(a.trimmed().toCaseFolded()) == withoutScheme(b.trimmed().toCaseFolded());
    default:
        break;
    }
    // A text of signs alone has no letters, and then only equal ones are the same.
    const QString letters = lettersOf(a);
    return !letters.isEmpty() && letters == lettersOf(b);
}

bool isSaidBy(ABProperty property, const ABMultiValue::Value &part, const ABMultiValue::Value &whole)
{
    if (const auto *text = std::get_if<QString>(&part))
        return text->isEmpty() || sayTheSame(property, *text, std::get<QString>(whole));
    const ABDictionary &other = std::get<ABDictionary>(whole);
    return std::ranges::all_of(std::get<ABDictionary>(part), [&](const ABDictionary::Entry &entry) {
        const QString *text = other.valueForKey(entry.first);
        return entry.second.isEmpty() || (text && sayTheSame(property, entry.second, *text));
    });
}
