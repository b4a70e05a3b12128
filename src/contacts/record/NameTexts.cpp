// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/record/NameTexts.h"

const QString &textOrNull(const PersonRecord &record, ABProperty property)
{
    static const QString null = QStringLiteral("(null)");
    const QString *text = record.text(property);
    return text ? *text : null;
}

QString nameKey(const PersonRecord &record)
{
    return textOrNull(record, kABFirstNameProperty) % textOrNull(record, kABLastNameProperty);
}

bool hasNameKey(const PersonRecord &record, const QString &key)
{
    const QString &first = textOrNull(record, kABFirstNameProperty);
    const QString &last = textOrNull(record, kABLastNameProperty);
    return first.size() + last.size() == key.size() && key.startsWith(first) && key.endsWith(last);
}
