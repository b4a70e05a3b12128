// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
// Reading and writing of the lines that give one entry of a list each.
#include "contacts/cards/CardFields.h"
#include "contacts/model/ABLabels.h"

namespace {

constexpr std::array kAddressParts{
    kABAddressStreetKey, kABAddressCityKey, kABAddressStateKey, kABAddressZIPKey, kABAddressCountryKey};

/// Adds a value that has the label that the line's TYPE words stand for, unless one is spelled out.
bool addLabelled(CardDraft &draft, const CardLine &line, ABMultiValue::Value value, bool holdsMore)
{
    const auto property = propertyOf(line.area());
    const TypeLabel *ofTypes = labelOfTypes(property, line.types);
    const CardDraft::Group *group = draft.groupOf(line);
    const bool isSpelledOut = (group && group->label) || line.has(CardParam::GoogleLabel);
    const unsigned plainTypes = ofTypes && !isSpelledOut ? ofTypes->written : 0U;
    const bool wordsSayMore = (line.types & ~assumedTypes(property)) != plainTypes;
    draft.addEntry(line, ofTypes ? &ofTypes->label : nullptr, std::move(value),
        holdsMore || wordsSayMore || line.hasUnusualParams());
    return true;
}

/// Leaves out a line without a value, together with what hangs on it.
bool leaveOut(CardDraft &draft, const CardLine &line)
{
    if (CardDraft::Group *group = draft.groupOf(line))
        group->labelUsed = group->countryCodeUsed = true;
    return true;
}

bool addText(CardDraft &draft, const CardLine &line, std::string_view value, bool holdsMore)
{
    return value.empty() ? leaveOut(draft, line) : addLabelled(draft, line, unescaped(value), holdsMore);
}

bool addRelation(CardDraft &draft, const CardLine &line, const QString *label, bool holdsMore)
{
    if (line.value.empty())
        return leaveOut(draft, line);
    draft.addEntry(line, label, unescaped(line.value), holdsMore);
    return true;
}

/// A relation may point to a card or a page elsewhere instead of naming somebody.
bool isReference(const CardLine &line)
{
    const std::string_view kind = paramValue(line, "VALUE");
    if (equalsIgnoringCase(kind, "text"))
        return false;
    std::string_view rest = line.value;
    return equalsIgnoringCase(kind, "uri")
        || (!takeScheme(rest).empty() && line.value.find_first_of(" \t") == std::string_view::npos);
}

/// The label that the words of TYPE give a relation: a standard one, or else the first word itself.
QString relationOf(const CardLine &line)
{
    constexpr unsigned params = CardParam::Bare | CardParam::Type;
    const std::string_view standard = findWord(line, params, relationLabel);
    if (!standard.empty())
        return *relationLabel(standard);
    const std::string_view word = findWord(line, params, isFreeWord);
    return word.empty() ? QString() : textOfUtf8(word);
}

} // namespace

bool readEntry(CardDraft &draft, const CardLine &line)
{
    return addText(draft, line, line.value, false);
}

bool readPhone(CardDraft &draft, const CardLine &line)
{
    const bool hasPhoneScheme = equalsIgnoringCase(line.value.substr(0, 4), "tel:");
    return addText(draft, line, line.value.substr(hasPhoneScheme ? 4 : 0), hasPhoneScheme);
}

bool readAddress(CardDraft &draft, const CardLine &line)
{
    std::string_view rest = line.value;
    const std::string_view postBox = takePart(rest);
    const std::string_view extended = takePart(rest);
    ABDictionary address;
    address.reserve(kAddressParts.size() + 1); // with the country code
    for (const ABKey key : kAddressParts) {
        const std::string_view part = takePart(rest);
        if (part.empty())
            continue;
        const bool isPlain = part.find('\\') == std::string_view::npos;
        address.setValue(isPlain && isShared(key) ? draft.pool.intern(part) : unescaped(part), key);
    }
    const bool holdsMore =
        !postBox.empty() || !extended.empty() || rest.find_first_not_of(';') != std::string_view::npos;
    if (address.isEmpty() && !holdsMore)
        return leaveOut(draft, line);
    CardDraft::Group *group = draft.groupOf(line);
    if (group && group->countryCode) {
        group->countryCodeUsed = true;
        address.setValue(unescaped(group->countryCode->value), kABAddressCountryCodeKey);
    }
    return addLabelled(draft, line, std::move(address), holdsMore);
}

bool readRelatedName(CardDraft &draft, const CardLine &line)
{
    const QString ofTypes = relationOf(line);
    return addRelation(draft, line, &ofTypes, !line.hasOnlyValue());
}

bool readRelated(CardDraft &draft, const CardLine &line)
{
    const QString ofTypes = relationOf(line);
    return !isReference(line) && addRelation(draft, line, &ofTypes, true);
}

bool readRelation(CardDraft &draft, const CardLine &line)
{
    return addRelation(draft, line, relationLabel(line.name.substr(line.name.rfind('-') + 1)), true);
}

std::string entryUnit(
    const CardRow &row, const QString &label, std::string params, std::string_view value, const QString *countryCode)
{
    const std::string types = label.isNull() ? std::string() : typesOfLabel(propertyOf(row.area), label);
    if (!types.empty())
        params.append(";TYPE=").append(types);
    std::string line(row.name);
    line.append(params).append(":").append(value);
    const bool isSpelledOut = !label.isNull() && types.empty();
    if (!isSpelledOut && !countryCode)
        return line;
    line.insert(0, kUnitMark);
    if (isSpelledOut)
        line.append("\n").append(kUnitMark).append("X-ABLabel:").append(escaped(label));
    if (countryCode)
        line.append("\n").append(kUnitMark).append("X-ABADR:").append(escaped(*countryCode));
    return line;
}

bool isSayable(const ABMultiValue::Entry &entry)
{
    if (!entry.label.isEmpty() && (!isSayable(entry.label) || entry.label.contains(u'^')))
        return false;
    if (const auto *text = std::get_if<QString>(&entry.value))
        return isSayable(*text);
    const ABDictionary &parts = entry.dictionary();
    return !parts.isEmpty()
        && std::ranges::all_of(parts, [](const ABDictionary::Entry &part) { return isSayable(part.second); });
}

bool writeEntry(const CardRow &row, const ABMultiValue::Entry &entry, CardUnits &units)
{
    const Escapes escapes = row.area == areaOf(kABURLsProperty) ? Escapes::OnlyBackslashAndNewline : Escapes::All;
    units.push_back(entryUnit(row, entry.label, {}, escaped(entry.text(), escapes)));
    return row.area != areaOf(kABPhoneProperty)
        || !entry.text().startsWith(QLatin1StringView("tel:"), Qt::CaseInsensitive);
}

bool writeAddress(const CardRow &row, const ABMultiValue::Entry &entry, CardUnits &units)
{
    std::string value = ";";
    bool hasParts = false;
    for (const ABKey key : kAddressParts) {
        const QString *part = entry.dictionary().valueForKey(key);
        value.append(";").append(part ? escaped(*part) : std::string());
        hasParts = hasParts || part;
    }
    units.push_back(entryUnit(row, entry.label, {}, value, entry.dictionary().valueForKey(kABAddressCountryCodeKey)));
    return hasParts;
}

std::string printLabelled(const UnitToPrint &unit)
{
    std::string lines = unit.kept.empty() ? unit.plain : unit.kept;
    const std::size_t end = lines.find('\n');
    if (unit.form != VCardForm::Desktop || end == std::string::npos)
        return lines;
    const CardLine value = parsedLine(std::string_view(lines).substr(0, end));
    const CardLine label = parsedLine(std::string_view(lines).substr(end + 1, lines.find('\n', end + 1) - end - 1));
    const QString text = unescaped(label.value);
    if (label.area() != CardArea::Label || value.has(CardParam::Type | CardParam::GoogleLabel) || text.isEmpty()
        || breaksParam(text))
        return lines;
    const auto place = std::size_t(value.name.data() + value.name.size() - lines.data());
    return lines.insert(place, ";TYPE=OTHER;X-GOOGLE-LABEL=\"" + text.toStdString() + '"');
}
