// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "scan/TextRules.h"

#include "scan/ScanLog.h"

#include <algorithm>

namespace {

bool consistsOfSpaces(const QString &text)
{
    // One line for each space of a text of two or more: by the million in a large address book, hence its own category.
    if (text.size() > 1 && lcScanTrace().isDebugEnabled()) {
        for (qsizetype spaces = text.count(u' '); spaces > 0; --spaces)
            qCDebug(lcScanTrace, "字符是空空格");
    }
    return !text.isEmpty() && std::ranges::all_of(text, [](QChar c) { return c == u' '; });
}

Findings peopleWithTextOfSpaces(People people, ABProperty property)
{
    return peopleWhere(people, [property](const PersonRecord &record) {
        const QString *text = record.text(property);
        return text && consistsOfSpaces(*text);
    });
}

bool isAsciiLetter(QChar c)
{
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

bool hasInvalidEmail(const PersonRecord &record)
{
    const ABMultiValue *emails = record.multiValue(kABEmailProperty);
    return emails && std::ranges::any_of(emails->entries(), [](const ABMultiValue::Entry &entry) {
        return !entry.text().contains(u'@') || !entry.text().contains(QLatin1StringView(".com"));
    });
}

bool hasInvalidPhone(const PersonRecord &record)
{
    const ABMultiValue *phones = record.multiValue(kABPhoneProperty);
    return phones && std::ranges::any_of(phones->entries(), [](const ABMultiValue::Entry &entry) {
        return std::ranges::any_of(entry.text(), isAsciiLetter);
    });
}

} // namespace

Findings peopleWithNoteOfSpaces(People people)
{
    return peopleWithTextOfSpaces(people, kABNoteProperty);
}

Findings peopleWithNicknameOfSpaces(People people)
{
    return peopleWithTextOfSpaces(people, kABNicknameProperty);
}

Findings peopleWithInvalidCharacters(People people)
{
    return peopleWhere(people, [](const PersonRecord &record) {
        if (hasInvalidEmail(record))
            return true;
        if (!hasInvalidPhone(record))
            return false;
        qCDebug(lcScan, "电话号码非法");
        return true;
    });
}
