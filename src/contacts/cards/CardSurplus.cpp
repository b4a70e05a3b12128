// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/CardSurplus.h"

#include "contacts/cards/CardMap.h"
#include "contacts/cards/TextCoding.h"

#include <algorithm>
#include <array>

namespace {

/// Whether a parameter belongs to the value or its label, which are others now.
bool isOfValue(std::string_view param)
{
    constexpr std::array<std::string_view, 12> names{"", "TYPE", "VALUE", "ENCODING", "CHARSET", "LABEL", "GEO",
        "X-GOOGLE-LABEL", "X-EVOLUTION-E164", "X-SERVICE-TYPE", "X-USER", "X-APPLE-OMIT-YEAR"};
    return std::ranges::any_of(names, [param](std::string_view name) { return equalsIgnoringCase(name, param); });
}

std::string carriedParams(const CardLine &old, const CardLine &line)
{
    std::string carried;
    for (const std::string_view word : {"INTERNET", "PREF"}) { // they name no label
        const auto is = [word](std::string_view each) { return equalsIgnoringCase(each, word); };
        if (!findWord(old, CardParam::Type, is).empty() && findWord(line, CardParam::Type, is).empty())
            carried.append(";TYPE=").append(word);
    }
    LineParam param;
    for (std::string_view rest = old.params; takeParam(rest, param);) {
        if (!isOfValue(param.name) && paramValue(line, param.name).empty())
            carried.append(";").append(param.name).append("=").append(param.value);
    }
    return carried;
}

std::string mergedValue(const CardLine &old, const CardLine &line)
{
    std::string_view rest = line.value;
    std::string_view oldRest = old.value;
    const auto twoParts = [](std::string_view &from) {
        std::string parts(takePart(from));
        return parts.append(";").append(takePart(from));
    };
    if (line.area() == areaOf(kABAddressProperty)) { // post-office box and extended address
        twoParts(rest);
        return twoParts(oldRest).append(";").append(rest);
    }
    twoParts(oldRest);
    if (line.area() != areaOf(kABOrganizationProperty) || oldRest.empty())
        return std::string(line.value);
    const std::string_view organization = takePart(rest);
    return std::string(organization).append(";").append(takePart(rest)).append(";").append(oldRest);
}

QString joined(const QString &a, const QString &separator, const QString &b)
{
    return a.isEmpty() || b.isEmpty() ? QString(a % b) : QString(a % separator % b);
}

/// The texts by which Evolution files a person, in its order.
std::array<QString, 8> fileAsTexts(const PersonRecord &record)
{
    const QString comma = QStringLiteral(", ");
    const QString blank = QStringLiteral(" ");
    const QString &last = record.textOrEmpty(kABLastNameProperty);
    const QString &first = record.textOrEmpty(kABFirstNameProperty);
    const QString &company = record.textOrEmpty(kABOrganizationProperty);
    const QString given = joined(first, blank, record.textOrEmpty(kABMiddleNameProperty));
    const QString inBrackets = company.isEmpty() ? QString() : QString(u'(' % company % u')');
    const QString filed = joined(last, comma, given);
    return {filed, joined(last, comma, first), joined(given, blank, last), joined(first, blank, last),
        joined(last, blank, given), company, joined(filed, blank, inBrackets),
        joined(company, blank, filed.isEmpty() ? QString() : QString(u'(' % filed % u')'))};
}

} // namespace

std::string withSurplusOf(const CardLine &old, const std::string &text)
{
    const CardLine line = parsedLine(text);
    if (old.row != line.row || !line.row)
        return text;
    const std::string head = text.substr(0, text.size() - line.value.size() - 1);
    std::string value = mergedValue(old, line);
    for (std::size_t at = value.find('\n'); at != std::string::npos; at = value.find('\n', at))
        value.replace(at, 1, "\\n");
    return head + carriedParams(old, line) + ':' + value;
}

bool isLabelOfAddress(const CardLine &line, const CardLine &address)
{
    const auto kinds = [](const CardLine &each) { return each.types & ~unsigned(CardType::Unknown); };
    return line.area() == CardArea::AddressLabel && kinds(line) == kinds(address)
        && (line.group.empty() || equalsIgnoringCase(line.group, address.group));
}

QString followingFiledAs(const QString &filedAs, const PersonRecord &before, const PersonRecord &after)
{
    const auto known = fileAsTexts(before);
    const auto *form = std::ranges::find(known, filedAs);
    if (filedAs.isEmpty() || form == known.end())
        return {};
    const QString follows = fileAsTexts(after).at(std::size_t(form - known.begin()));
    return follows.isNull() ? QStringLiteral("") : follows;
}
