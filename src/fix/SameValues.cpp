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
    return address.endsWith(u'/') ? address.chopped(1) : address;
}

struct Digits
{
    QString text;
    bool isInternational = false;
};

/// As a phone number is dialled from abroad or from within the country. Nothing for a number with letters: an extension
/// or a word is part of it.
Digits digitsOf(const QString &number)
{
    Digits digits;
    for (const QChar character : number) {
        if (character.isDigit())
            digits.text += QChar(u'0' + character.digitValue());
        else if (character.isLetter() || character == u'#' || character == u'*')
            return {};
        else if (character == u'+' && digits.text.isEmpty())
            digits.isInternational = true;
    }
    if (!digits.isInternational && digits.text.startsWith(QLatin1StringView("00"))) {
        digits.isInternational = true;
        digits.text.remove(0, 2);
    }
    return digits;
}

/// The same subscriber, where one number has a country code of up to three digits and the other may have a zero there.
bool isSameWithCountryCode(const QString &international, const QString &national)
{
    constexpr qsizetype kShortestSubscriber = 7; // shorter ones stand for somebody else in each town
    const QStringView subscriber = QStringView(national).sliced(national.startsWith(u'0') ? 1 : 0);
    const qsizetype codeLength = international.size() - subscriber.size();
    return subscriber.size() >= kShortestSubscriber && codeLength >= 1 && codeLength <= 3
        && international.endsWith(subscriber);
}

} // namespace

SaidValue::SaidValue(ABProperty property, const ABMultiValue::Value &value)
{
    if (const auto *text = std::get_if<QString>(&value)) {
        m_texts.push_back(textOf(property, *text));
        return;
    }
    for (const auto &[key, part] : std::get<ABDictionary>(value)) {
        m_texts.push_back(textOf(property, part));
        m_texts.back().key = key;
    }
}

SaidValue::Text SaidValue::textOf(ABProperty property, const QString &written)
{
    if (property == kABEmailProperty)
        return {ABKey(), written, written.trimmed().toCaseFolded(), {}};
    if (property == kABURLsProperty)
        return {ABKey(), written, withoutScheme(written.trimmed().toCaseFolded()), {}};
    const Digits digits = property == kABPhoneProperty ? digitsOf(written) : Digits();
    return {ABKey(), written, lettersOf(written), digits.text, digits.isInternational};
}

bool SaidValue::sayTheSame(const Text &a, const Text &b)
{
    if (a.written == b.written)
        return true;
    if (a.written.isEmpty() || b.written.isEmpty())
        return false;
    if (a.digits.isEmpty() || b.digits.isEmpty()) // signs alone have no letters: then only equal ones are the same
        return !a.plain.isEmpty() && a.plain == b.plain;
    if (a.isInternational == b.isInternational)
        return a.digits == b.digits;
    return a.isInternational ? isSameWithCountryCode(a.digits, b.digits) : isSameWithCountryCode(b.digits, a.digits);
}

bool SaidValue::isSaidBy(const SaidValue &whole) const
{
    return std::ranges::all_of(m_texts, [&](const Text &text) {
        return text.written.isEmpty() || std::ranges::any_of(whole.m_texts, [&](const Text &other) {
            return other.key == text.key && sayTheSame(text, other);
        });
    });
}
