// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
// Reading and writing of the lines that a record has at most one value of.
#include "contacts/cards/CardFields.h"

#include <QRegularExpression>

namespace {

/// In the order in which a line has them.
constexpr std::array kNameParts{
    kABLastNameProperty, kABFirstNameProperty, kABMiddleNameProperty, kABTitleProperty, kABSuffixProperty};

/// Sets one part of a structured value; false when it is a list or the like, which one plain text cannot tell.
bool setPart(CardDraft &draft, ABProperty property, std::string_view part)
{
    if (part.empty())
        return true;
    draft.record().setText(property, unescaped(part));
    return !isList(part);
}

/// A day of a year, in the forms that cards have: 19960415, 1996-04-15, 1996/4/15, --0415, --04-15; a time may follow.
/// Invalid for anything that is no full date.
QDate dateFrom(std::string_view text)
{
    static const QRegularExpression form(
        QStringLiteral(R"(^(?|(\d{4})([-/])(\d\d?)\2(\d\d?)|(\d{4})()(\d\d)(\d\d)|(--)()(\d\d)-?(\d\d))(?:[Tt ]|\z))"));
    const QString date = textOfUtf8(trimmed(text));
    const QRegularExpressionMatch match = form.match(date);
    const QStringView year = match.capturedView(1);
    return {year == u"--" ? kNoYear : year.toInt(), match.capturedView(3).toInt(), match.capturedView(4).toInt()};
}

/// The name for display, which a card must have: from the name's parts, or else the organisation, or else an address.
QString shownName(const PersonRecord &record)
{
    constexpr qsizetype usual = 48;
    QString name;
    name.reserve(usual);
    const auto add = [&name](const QString &piece) {
        if (!name.isEmpty() && !piece.isEmpty())
            name += u' ';
        name += piece;
    };
    for (const ABProperty part :
        {kABTitleProperty, kABFirstNameProperty, kABMiddleNameProperty, kABLastNameProperty, kABSuffixProperty})
        add(record.textOrEmpty(part));
    if (name.isEmpty())
        name = record.textOrEmpty(kABOrganizationProperty);
    for (const ABProperty list : {kABEmailProperty, kABPhoneProperty}) {
        if (const auto entries = record.entries(list); name.isEmpty() && !entries.empty())
            name = entries.front().text();
    }
    return name;
}

std::string part(const PersonRecord &record, ABProperty property)
{
    return escaped(record.textOrEmpty(property));
}

bool isPartSayable(const PersonRecord &record, ABProperty property)
{
    const QString *text = record.text(property);
    return !text || isSayable(*text);
}

std::string line(const CardRow &row, std::string_view value)
{
    std::string text(row.name);
    return text.append(":").append(value);
}

} // namespace

bool readName(CardDraft &draft, const CardLine &line)
{
    if (draft.hasName)
        return false;
    draft.hasName = true;
    std::string_view rest = line.value;
    bool isPlain = line.hasOnlyValue();
    for (const ABProperty property : kNameParts)
        isPlain = setPart(draft, property, takePart(rest)) && isPlain;
    const bool hasSurplus = rest.find_first_not_of(';') != std::string_view::npos;
    draft.addSource(line, !isPlain || hasSurplus);
    return true;
}

bool readFormattedName(CardDraft &draft, const CardLine &line)
{
    if (draft.formattedName)
        return false;
    draft.formattedName = &line; // whether it says more than the name's parts shows when all of them are read
    return true;
}

void takeNameFromFormattedName(CardDraft &draft)
{
    if (draft.hasName || !draft.formattedName)
        return;
    const QString name = unescaped(draft.formattedName->value).trimmed();
    const QString *organization = draft.record().text(kABOrganizationProperty);
    if (name.isEmpty() || (organization && organization->trimmed() == name))
        return;
    const qsizetype blank = name.lastIndexOf(u' ');
    if (blank < 0) {
        draft.record().setText(kABFirstNameProperty, name);
        return;
    }
    draft.record().setText(kABFirstNameProperty, name.first(blank).trimmed());
    draft.record().setText(kABLastNameProperty, name.sliced(blank + 1));
}

bool readOrganization(CardDraft &draft, const CardLine &line)
{
    if (draft.record().text(kABOrganizationProperty) || draft.record().text(kABDepartmentProperty))
        return false;
    std::string_view rest = line.value;
    setPart(draft, kABOrganizationProperty, takePart(rest));
    setPart(draft, kABDepartmentProperty, takePart(rest));
    const bool hasSurplus = rest.find_first_not_of(';') != std::string_view::npos;
    draft.addSource(line, !line.hasOnlyValue() || hasSurplus);
    return true;
}

bool readText(CardDraft &draft, const CardLine &line)
{
    if (line.value.empty())
        return true;
    const auto property = propertyOf(line.area());
    if (draft.record().text(property))
        return false;
    draft.record().setText(property, unescaped(line.value));
    const bool dividesList = property == kABNicknameProperty && isList(line.value);
    draft.addSource(line, !line.hasOnlyValue() || dividesList);
    return true;
}

/// Several make one note, with an empty line between them.
bool readNote(CardDraft &draft, const CardLine &line)
{
    if (line.value.empty())
        return true;
    if (draft.noteLines++ > 0)
        draft.note += QLatin1String("\n\n");
    draft.note += unescaped(line.value);
    draft.sources.push_back({&line, 0, !line.hasOnlyValue()});
    return true;
}

bool readBirthday(CardDraft &draft, const CardLine &line)
{
    QDate date = draft.record().birthday() ? QDate() : dateFrom(line.value);
    if (!date.isValid())
        return line.value.empty();
    bool isPlain = !line.row->isLate && line.types == 0 && trimmed(line.value).size() <= 10;
    if (line.has(CardParam::OmitYear)) {
        isPlain = isPlain && date.year() == kNoYear && !line.has(CardParam::Unknown);
        if (paramValue(line, "X-APPLE-OMIT-YEAR") == view(QByteArray::number(date.year())))
            date = QDate(kNoYear, date.month(), date.day());
    } else {
        isPlain = isPlain && !line.hasUnusualParams();
    }
    draft.record().setBirthday(date);
    draft.addSource(line, !isPlain);
    return true;
}

bool readUid(CardDraft &draft, const CardLine &line)
{
    const std::string_view value = trimmed(line.value);
    if (!draft.uid.isNull())
        return false;
    if (value.empty())
        return true;
    draft.uid = unescaped(value);
    draft.addSource(line, !line.hasOnlyValue());
    return true;
}

bool readShowAs(CardDraft &draft, const CardLine &line)
{
    if (draft.record().flags() || !equalsIgnoringCase(trimmed(line.value), "COMPANY"))
        return false;
    draft.record().setFlags(kABShowAsCompany);
    draft.addSource(line, !line.hasOnlyValue());
    return true;
}

bool readKind(CardDraft &draft, const CardLine &line)
{
    const std::string_view kind = trimmed(line.value);
    draft.isGroup = draft.isGroup || equalsIgnoringCase(kind, "group");
    if (draft.record().flags() || !equalsIgnoringCase(kind, "org"))
        return false;
    draft.record().setFlags(kABShowAsCompany);
    draft.addSource(line, true);
    return true;
}

bool readExact(CardDraft &draft, const CardLine &line)
{
    draft.exactLines.push_back(&line);
    return true;
}

std::string formattedName(const PersonRecord &record)
{
    return escaped(shownName(record));
}

bool isFormattedName(const PersonRecord &record, std::string_view name)
{
    return shownName(record) == unescaped(name);
}

bool writeUid(const CardRow &row, const CardPerson &person, CardUnits &units)
{
    if (person.uid.isEmpty())
        return true;
    units.push_back(line(row, escaped(person.uid)));
    return isSayable(person.uid) && person.uid == person.uid.trimmed();
}

bool writeName(const CardRow &row, const CardPerson &person, CardUnits &units)
{
    std::string value = part(person.record, kNameParts.front());
    for (const ABProperty property : std::span(kNameParts).subspan(1))
        value.append(";").append(part(person.record, property));
    units.push_back(line(row, value));
    return std::ranges::all_of(kNameParts, [&](ABProperty property) { return isPartSayable(person.record, property); });
}

bool writeFormattedName(const CardRow &row, const CardPerson &person, CardUnits &units)
{
    units.push_back(line(row, formattedName(person.record)));
    return true;
}

bool writeOrganization(const CardRow &row, const CardPerson &person, CardUnits &units)
{
    std::string value = part(person.record, kABOrganizationProperty);
    const std::string department = part(person.record, kABDepartmentProperty);
    if (!department.empty())
        value.append(";").append(department);
    if (!value.empty())
        units.push_back(line(row, value));
    return isPartSayable(person.record, kABOrganizationProperty) && isPartSayable(person.record, kABDepartmentProperty);
}

bool writeText(const CardRow &row, const CardPerson &person, CardUnits &units)
{
    const std::string value = part(person.record, propertyOf(row.area));
    if (!value.empty())
        units.push_back(line(row, value));
    return isPartSayable(person.record, propertyOf(row.area));
}

bool writeBirthday(const CardRow &row, const CardPerson &person, CardUnits &units)
{
    const auto date = person.record.birthday();
    if (!date)
        return true;
    std::string text(row.name);
    if (date->year() == kNoYear)
        text += ";X-APPLE-OMIT-YEAR=1604";
    units.push_back(text.append(":").append(date->toString(Qt::ISODate).toStdString()));
    return true;
}

/// 4.0 has dates without dashes, and a special form for an unknown year.
std::string printBirthday(const UnitToPrint &unit)
{
    if (!unit.kept.empty() || unit.form != VCardForm::V4)
        return unit.kept.empty() ? unit.plain : unit.kept;
    const QDate date = *unit.record.birthday();
    const QString form = date.year() == kNoYear ? QStringLiteral("--MMdd") : QStringLiteral("yyyyMMdd");
    return unit.plain.substr(0, unit.plain.find_first_of(";:")) + ':' + date.toString(form).toStdString();
}

bool writeShowAs(const CardRow &row, const CardPerson &person, CardUnits &units)
{
    const bool isCompany = person.record.flags() == kABShowAsCompany;
    if (isCompany)
        units.push_back(line(row, "COMPANY"));
    return isCompany || !person.record.flags();
}
