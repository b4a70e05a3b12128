// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/model/NameTexts.h"

const QString &textOrNull(const PersonRecord &record, ABProperty property)
{
    static const QString null = QStringLiteral("(null)");
    const QString *text = record.text(property);
    return text ? *text : null;
}

QString displayName(const PersonRecord &record)
{
    return textOrNull(record, kABFirstNameProperty) % u' ' % textOrNull(record, kABLastNameProperty);
}

QString presentNames(const PersonRecord &record)
{
    QStringList names;
    for (const ABProperty property : {kABFirstNameProperty, kABLastNameProperty}) {
        if (const QString *name = record.text(property))
            names += *name;
    }
    return names.join(u' ');
}

QString readableName(const PersonRecord &record)
{
    const auto textOf = [&record](ABProperty property) { return record.textOrEmpty(property).simplified(); };
    QString name = QString(textOf(kABFirstNameProperty) % u' ' % textOf(kABLastNameProperty)).trimmed();
    if (!name.isEmpty())
        return name;
    const QString organization = textOf(kABOrganizationProperty);
    const auto emails = record.entries(kABEmailProperty);
    return organization.isEmpty() && !emails.empty() ? emails.front().text().simplified() : organization;
}

QString withReadableName(const QString &text, const PersonRecord &record)
{
    const QString name = readableName(record);
    return name.isEmpty() ? text : QString(text % QStringLiteral(" (") % name % u')');
}

QString nameKey(const PersonRecord &record)
{
    return textOrNull(record, kABFirstNameProperty) % textOrNull(record, kABLastNameProperty);
}
