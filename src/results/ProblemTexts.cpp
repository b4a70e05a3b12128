// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/ProblemTexts.h"

#include "contacts/model/NameTexts.h"
#include "fix/EmailSlots.h"

namespace {

/// The text in quotation marks.
QString quoted(const QString &text)
{
    return QLatin1Char('"') % text % QLatin1Char('"');
}

/// The names that there are, a blank between them.
QString presentNames(const PersonRecord &record)
{
    QStringList names;
    for (const ABProperty property : {kABFirstNameProperty, kABLastNameProperty}) {
        if (const QString *name = record.text(property))
            names += *name;
    }
    return names.join(QLatin1Char(' '));
}

bool hasName(const PersonRecord &record)
{
    return record.text(kABFirstNameProperty) || record.text(kABLastNameProperty);
}

} // namespace

QString unusualSuffixText(const Finding &finding)
{
    return quoted(textOrNull(*finding.person->record(), kABSuffixProperty))
        % QStringLiteral(" isn't an allowed suffix which is showed in the Preferences. Syncing unusual suffixes can "
                         "cause names to get mangled");
}

QString unusualTitleText(const Finding &finding)
{
    return quoted(textOrNull(*finding.person->record(), kABTitleProperty))
        % QStringLiteral(" isn't an allowed title which is showed in the Preference. Syncing unusual titles can cause "
                         "names to get mangled.");
}

QString incompleteNameText(const Finding &)
{
    return QStringLiteral("This is not a full name which means first or last name is missing or blank. In most cases, "
                          "single-name contacts that aren't a single person should be converted to a company contact.");
}

QString spaceInFirstNameText(const Finding &)
{
    return QStringLiteral("This contact has space character(s) in the first name. In some cases these names can become "
                          "transposed after syncing with Google.");
}

QString duplicateContactText(const Finding &)
{
    return QStringLiteral("This contact appears more than once in Contacts");
}

QString emptyNoteText(const Finding &)
{
    return QStringLiteral(
        "The note of this contact has space character(s). The notes field should probably be deleted.");
}

QString duplicateEmailText(const Finding &)
{
    return QStringLiteral("This contact has duplicated email address");
}

QString duplicatePhoneText(const Finding &)
{
    return QStringLiteral("This contact has duplicated phone number");
}

QString duplicateAddressText(const Finding &)
{
    return QStringLiteral("This contact has duplicated address");
}

QString emptyNicknameText(const Finding &)
{
    return QStringLiteral("The nickname of this contact has space character(s). The nickname field might show up as "
                          "\u201C\u201D on some devices.");
}

QString blankNameText(const Finding &)
{
    return QStringLiteral("This contact has no name or the name is empty. This contact might not show up or sync "
                          "correctly.");
}

QString invalidCharacterText(const Finding &)
{
    return QStringLiteral("This contact contains invalid character.");
}

QString sharedEmailText(const Finding &finding)
{
    const EmailSlots emails(*finding.person->record());
    const QString &address = emails.ofLabel(finding.duplicateEmailType);
    QString text = QStringLiteral(" This contact has the same email address (\"")
        % (address.isNull() ? QStringLiteral("(null)") : address) % QStringLiteral("\") as ");
    const auto &others = finding.duplicateEmailArray;
    for (qsizetype i = 0; i < others.size(); ++i) {
        const PersonRecordPtr record = others[i]->record();
        if (!hasName(*record))
            continue;
        text += presentNames(*record);
        if (i + 1 < others.size())
            text += QLatin1Char(',');
    }
    return text;
}
