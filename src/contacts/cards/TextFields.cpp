// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
// Readers of the lines that a record has at most one value of.
#include "contacts/cards/CardFields.h"
#include "contacts/cards/PlainLines.h"
#include "contacts/cards/WordTable.h"

#include <charconv>

namespace {

/// Sets one part of a structured value; false when it is a list or the like, which one plain text cannot tell.
bool setPart(CardDraft &draft, ABProperty property, std::string_view part)
{
    if (part.empty())
        return true;
    draft.record().setText(property, unescaped(part));
    return !isList(part);
}

/// Takes a number of at most @p most digits off @p text; -1 when there is none or less than @p least digits.
int takeNumber(std::string_view &text, std::size_t least, std::size_t most)
{
    const std::size_t length = std::min(text.find_first_not_of("0123456789"), text.size());
    if (length < least || length == 0)
        return -1;
    const std::size_t used = std::min(length, most);
    int number = -1;
    std::from_chars(text.data(), text.data() + used, number);
    text.remove_prefix(used);
    return number;
}

/// A day of a year, in the forms that cards have: 19960415, 1996-04-15, --0415, --04-15; a time may follow. Invalid for
/// anything that is no full date.
QDate dateFrom(std::string_view text)
{
    text = trimmed(text);
    const bool noYear = text.starts_with("--");
    int year = kNoYear;
    if (noYear)
        text.remove_prefix(2);
    else
        year = takeNumber(text, 4, 4);
    const bool divided = !noYear && (text.starts_with('-') || text.starts_with('/'));
    const char divider = divided ? text.front() : '-';
    if (divided)
        text.remove_prefix(1);
    const std::size_t digits = divided ? 1 : 2;
    const int month = takeNumber(text, digits, 2);
    if (text.starts_with(divider) && (divided || noYear))
        text.remove_prefix(1);
    else if (divided)
        return {};
    const int day = takeNumber(text, digits, 2);
    const bool onlyTimeFollows =
        text.empty() || text.starts_with('T') || text.starts_with('t') || text.starts_with(' ');
    if (!onlyTimeFollows || year < 1 || month < 1 || day < 1)
        return {};
    return {year, month, day};
}

/// Where the base64 of a picture inside the card begins, or an empty view when the picture is elsewhere.
std::string_view inlinePicture(const ContentLine &line)
{
    const std::string_view value = trimmed(line.value);
    if (equalsIgnoringCase(value.substr(0, 5), "data:")) {
        const std::size_t marker = value.substr(0, 200).find("base64");
        const std::size_t comma = marker == std::string_view::npos ? marker : value.find(',', marker);
        return comma == std::string_view::npos ? std::string_view() : value.substr(comma + 1);
    }
    if (value.substr(0, 200).find("://") != std::string_view::npos)
        return {};
    if (line.encoding == ContentLine::Encoding::Base64)
        return value;
    // Some programs leave out to say that it is base64.
    const bool looksLikePicture =
        value.starts_with("/9j/") || value.starts_with("iVBORw0KGgo") || value.starts_with("R0lGOD");
    return looksLikePicture && isBase64(value) ? value : std::string_view();
}

} // namespace

bool readName(CardDraft &draft, const ContentLine &line)
{
    if (draft.hasName)
        return false;
    draft.hasName = true;
    constexpr std::array parts{
        ABProperty::LastName, ABProperty::FirstName, ABProperty::MiddleName, ABProperty::Title, ABProperty::Suffix};
    std::string_view rest = line.value;
    bool isPlain = line.types == 0 && !hasUnusualParams(line);
    for (const ABProperty property : parts)
        isPlain = setPart(draft, property, takePart(rest)) && isPlain;
    const bool hasSurplus = rest.find_first_not_of(';') != std::string_view::npos;
    draft.addSource(line, !isPlain || hasSurplus);
    return true;
}

bool readFormattedName(CardDraft &draft, const ContentLine &line)
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
    const QString *organization = draft.record().text(ABProperty::Organization);
    if (name.isEmpty() || (organization && organization->trimmed() == name))
        return;
    const qsizetype blank = name.lastIndexOf(u' ');
    if (blank < 0) {
        draft.record().setText(ABProperty::FirstName, name);
        return;
    }
    draft.record().setText(ABProperty::FirstName, name.first(blank).trimmed());
    draft.record().setText(ABProperty::LastName, name.sliced(blank + 1));
}

bool readOrganization(CardDraft &draft, const ContentLine &line)
{
    if (draft.record().text(ABProperty::Organization) || draft.record().text(ABProperty::Department))
        return false;
    std::string_view rest = line.value;
    setPart(draft, ABProperty::Organization, takePart(rest));
    setPart(draft, ABProperty::Department, takePart(rest));
    const bool hasSurplus = rest.find_first_not_of(';') != std::string_view::npos;
    draft.addSource(line, line.types != 0 || hasUnusualParams(line) || hasSurplus);
    return true;
}

bool readText(CardDraft &draft, const ContentLine &line)
{
    if (line.value.empty())
        return true;
    const ABProperty property = textProperty(line.name);
    if (draft.record().text(property))
        return false;
    draft.record().setText(property, unescaped(line.value));
    const bool dividesList = property == ABProperty::Nickname && isList(line.value);
    draft.addSource(line, line.types != 0 || hasUnusualParams(line) || dividesList);
    return true;
}

bool readBirthday(CardDraft &draft, const ContentLine &line)
{
    QDate date = draft.record().birthday() ? QDate() : dateFrom(line.value);
    if (!date.isValid())
        return line.value.empty();
    bool isPlain = line.id == CardName::Birthday && line.types == 0 && trimmed(line.value).size() <= 10;
    if ((line.paramBits & CardParam::OmitYear) != 0) {
        isPlain = isPlain && date.year() == kNoYear && (line.paramBits & CardParam::Unknown) == 0;
        if (paramValue(line, "X-APPLE-OMIT-YEAR") == view(QByteArray::number(date.year())))
            date = QDate(kNoYear, date.month(), date.day());
    } else {
        isPlain = isPlain && !hasUnusualParams(line);
    }
    draft.record().setBirthday(date);
    draft.addSource(line, !isPlain);
    return true;
}

bool readUid(CardDraft &draft, const ContentLine &line)
{
    const std::string_view value = trimmed(line.value);
    if (!draft.uid.isNull())
        return false;
    if (value.empty())
        return true;
    draft.uid = unescaped(value);
    draft.addSource(line, line.types != 0 || hasUnusualParams(line));
    return true;
}

bool readShowAs(CardDraft &draft, const ContentLine &line)
{
    if (draft.record().flags() || !equalsIgnoringCase(trimmed(line.value), "COMPANY"))
        return false;
    draft.record().setFlags(kABShowAsCompany);
    draft.addSource(line, line.types != 0 || hasUnusualParams(line));
    return true;
}

bool readKind(CardDraft &draft, const ContentLine &line)
{
    const std::string_view kind = trimmed(line.value);
    draft.isGroup = draft.isGroup || equalsIgnoringCase(kind, "group");
    if (draft.record().flags() || !equalsIgnoringCase(kind, "org"))
        return false;
    draft.record().setFlags(kABShowAsCompany);
    draft.addSource(line, true);
    return true;
}

bool readPhoto(CardDraft &draft, const ContentLine &line)
{
    if (line.value.empty())
        return true;
    const std::string_view base64 = inlinePicture(line);
    if (base64.empty() || draft.record().imageData())
        return false;
    const QByteArray bytes = bytesFromBase64(base64);
    if (bytes.isEmpty()) {
        draft.lose(line, QStringLiteral("PHOTO holds no picture"));
        return true;
    }
    draft.record().setImageData(bytes);
    draft.addSource(line, hasUnusualParams(line));
    return true;
}

bool readExact(CardDraft &draft, const ContentLine &line)
{
    draft.exactLines.push_back(&line);
    return true;
}
