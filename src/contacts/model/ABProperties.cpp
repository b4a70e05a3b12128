// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/model/ABProperties.h"

#include <QCoreApplication>

#include <algorithm>

static_assert(kPropertyTable.size() == std::size_t(kABUIDProperty) + 1
    && std::ranges::is_sorted(kPropertyTable, {}, &ABPropertyInfo::property));

namespace {

constexpr auto kKeys = std::to_array<ABKeyInfo>({
    {kABAddressStreetKey, 0, kABAddressProperty, QLatin1StringView("street"), QLatin1StringView("Street")},
    {kABAddressCityKey, 1, kABAddressProperty, QLatin1StringView("city"), QLatin1StringView("City")},
    {kABAddressStateKey, 2, kABAddressProperty, QLatin1StringView("state"), QLatin1StringView("State")},
    {kABAddressZIPKey, 3, kABAddressProperty, QLatin1StringView("zip"), QLatin1StringView("ZIP")},
    {kABAddressCountryKey, 4, kABAddressProperty, QLatin1StringView("country"), QLatin1StringView("Country")},
    {kABAddressCountryCodeKey, 5, kABAddressProperty, QLatin1StringView("countryCode"),
        QLatin1StringView("CountryCode")},
    {kABInstantMessageServiceKey, 6, kABInstantMessageProperty, QLatin1StringView("service"),
        QLatin1StringView("InstantMessageService")},
    {kABInstantMessageUsernameKey, 7, kABInstantMessageProperty, QLatin1StringView("username"),
        QLatin1StringView("InstantMessageUsername")},
    {kABSocialProfileServiceKey, 8, kABSocialProfileProperty, QLatin1StringView("service"),
        QLatin1StringView("SocialProfileService")},
    {kABSocialProfileUsernameKey, 9, kABSocialProfileProperty, QLatin1StringView("username"),
        QLatin1StringView("SocialProfileUsername")},
});

/// The run of table rows for which @p wanted holds; both tables keep such rows together.
template <typename Row, std::size_t size, typename Predicate>
std::span<const Row> rows(const std::array<Row, size> &table, Predicate wanted)
{
    const auto first = std::ranges::find_if(table, wanted);
    const auto last = std::find_if_not(first, table.end(), wanted);
    return {first, last};
}

} // namespace

std::span<const ABPropertyInfo> propertiesOfKind(ABPropertyKind kind)
{
    return rows(kPropertyTable, [kind](const ABPropertyInfo &info) { return info.kind == kind; });
}

std::optional<ABProperty> propertyNamed(QStringView name)
{
    const auto found =
        std::ranges::find_if(kPropertyTable, [name](const ABPropertyInfo &info) { return info.name == name; });
    return found == kPropertyTable.end() ? std::nullopt : std::optional(found->property);
}

QString propertyTitle(ABProperty property)
{
    return QCoreApplication::translate("Property", propertyInfo(property).title);
}

const ABKeyInfo &keyInfo(ABKey key)
{
    return kKeys.at(static_cast<std::size_t>(key));
}

std::span<const ABKeyInfo> keysOfProperty(ABProperty property)
{
    return rows(kKeys, [property](const ABKeyInfo &info) { return info.property == property; });
}
