// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
// Readers of the lines that give one entry of a multi-value each.
#include "contacts/cards/CardFields.h"
#include "contacts/cards/WordTable.h"
#include "contacts/model/ABLabels.h"

namespace {

/// The label that a line's TYPE words stand for, unless one is spelled out, and whether the words say more than that.
struct TypeLabel
{
    TypeLabel(CardDraft &draft, const ContentLine &line, ABProperty property)
    {
        quint16 plainTypes = 0;
        const unsigned types = static_cast<unsigned>(line.types) & ~static_cast<unsigned>(assumedTypes(property));
        const QString *ofTypes = labelOfTypes(property, line.types, plainTypes);
        const CardGroups::Group *group = draft.groups().of(line);
        const bool isSpelledOut = (group && group->label) || (line.paramBits & CardParam::GoogleLabel) != 0;
        label = draft.labelOf(line, ofTypes);
        wordsSayMore = types != (isSpelledOut ? 0U : plainTypes);
    }

    QString label;
    bool wordsSayMore = false;
};

/// Leaves out a line without a value, together with what hangs on it.
bool leaveOut(CardDraft &draft, const ContentLine &line)
{
    if (CardGroups::Group *group = draft.groups().of(line))
        group->labelUsed = group->countryCodeUsed = true;
    return true;
}

bool addText(CardDraft &draft, const ContentLine &line, ABProperty property, std::string_view value, bool holdsMore)
{
    if (value.empty())
        return leaveOut(draft, line);
    const TypeLabel type(draft, line, property);
    draft.addEntry(
        line, property, type.label, unescaped(value), holdsMore || type.wordsSayMore || hasUnusualParams(line));
    return true;
}

/// A relation, labelled by the first word that names one.
bool addRelation(CardDraft &draft, const ContentLine &line, const QString &label)
{
    if (line.value.empty())
        return leaveOut(draft, line);
    draft.addEntry(line, ABProperty::RelatedNames, label, unescaped(line.value), true);
    return true;
}

bool hasScheme(std::string_view value)
{
    const std::size_t end =
        value.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789+.-");
    return end != std::string_view::npos && end > 0 && value[end] == ':';
}

/// A relation may point to a card or a page elsewhere instead of naming somebody.
bool isReference(const ContentLine &line)
{
    const std::string_view kind = paramValue(line, "VALUE");
    if (equalsIgnoringCase(kind, "text"))
        return false;
    return equalsIgnoringCase(kind, "uri")
        || (hasScheme(line.value) && line.value.find_first_of(" \t") == std::string_view::npos);
}

/// The label that the words of TYPE give a relation: a standard one, or else the first word itself.
QString relationOf(const ContentLine &line)
{
    QString label;
    std::string_view rest = line.params;
    LineParam param;
    while (takeParam(rest, param)) {
        if (!param.name.empty() && paramBit(param.name) != CardParam::Type)
            continue;
        std::string_view words = param.value;
        std::string_view word;
        while (takeWord(words, word)) {
            if (const QString *standard = relationLabel(word))
                return *standard;
            if (label.isNull() && typeBit(word) == CardType::Unknown && !equalsIgnoringCase(word, "PREF"))
                label = textFromUtf8(word);
        }
    }
    return label;
}

/// Cities and countries repeat from card to card, streets do not.
bool isShared(ABKey key)
{
    return key != ABKey::AddressStreet;
}

} // namespace

bool readEmail(CardDraft &draft, const ContentLine &line)
{
    return addText(draft, line, ABProperty::Email, line.value, false);
}

bool readPhone(CardDraft &draft, const ContentLine &line)
{
    const bool hasPhoneScheme = equalsIgnoringCase(line.value.substr(0, 4), "tel:");
    return addText(draft, line, ABProperty::Phone, line.value.substr(hasPhoneScheme ? 4 : 0), hasPhoneScheme);
}

bool readUrl(CardDraft &draft, const ContentLine &line)
{
    return addText(draft, line, ABProperty::Urls, line.value, false);
}

bool readAddress(CardDraft &draft, const ContentLine &line)
{
    constexpr std::array keys{
        ABKey::AddressStreet, ABKey::AddressCity, ABKey::AddressState, ABKey::AddressZip, ABKey::AddressCountry};
    std::string_view rest = line.value;
    const std::string_view postBox = takePart(rest);
    const std::string_view extended = takePart(rest);
    ABDictionary address;
    address.reserve(keys.size() + 1); // with the country code
    for (const ABKey key : keys) {
        const std::string_view part = takePart(rest);
        if (part.empty())
            continue;
        const bool isPlain = part.find('\\') == std::string_view::npos;
        address.setValue(isPlain && isShared(key) ? draft.pool().intern(part) : unescaped(part), key);
    }
    const bool holdsMore =
        !postBox.empty() || !extended.empty() || rest.find_first_not_of(';') != std::string_view::npos;
    if (address.isEmpty() && !holdsMore)
        return leaveOut(draft, line);
    CardGroups::Group *group = draft.groups().of(line);
    if (group && group->countryCode) {
        group->countryCodeUsed = true;
        address.setValue(unescaped(group->countryCode->value), ABKey::AddressCountryCode);
    }
    const TypeLabel type(draft, line, ABProperty::Address);
    draft.addEntry(line, ABProperty::Address, type.label, std::move(address),
        holdsMore || type.wordsSayMore || hasUnusualParams(line));
    return true;
}

bool readRelatedName(CardDraft &draft, const ContentLine &line)
{
    if (line.value.empty())
        return leaveOut(draft, line);
    const QString ofTypes = relationOf(line);
    const bool holdsMore = line.types != 0 || hasUnusualParams(line);
    draft.addEntry(line, ABProperty::RelatedNames, draft.labelOf(line, &ofTypes), unescaped(line.value), holdsMore);
    return true;
}

bool readRelated(CardDraft &draft, const ContentLine &line)
{
    if (isReference(line))
        return false;
    const QString ofTypes = relationOf(line);
    return addRelation(draft, line, draft.labelOf(line, &ofTypes));
}

bool readRelation(CardDraft &draft, const ContentLine &line)
{
    const QString *ofName = relationLabel(line.name.substr(line.name.rfind('-') + 1));
    return addRelation(draft, line, draft.labelOf(line, ofName));
}
