// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/ABProperties.h"
#include "contacts/model/Utf8Text.h"

#include <string>
#include <string_view>
#include <unordered_map>

/// Whether many people share the texts of this key: the others are nearly unique and not worth looking up.
constexpr bool isShared(ABKey key)
{
    return key != kABAddressStreetKey && key != kABAddressZIPKey && key != kABInstantMessageUsernameKey
        && key != kABSocialProfileUsernameKey;
}

/// Returns one shared QString for equal texts, so that common labels, services, cities and countries take memory once.
/// For one reader at a time; texts outlive the pool.
class TextPool
{
public:
    /// @p utf8 must be valid UTF-8. Never returns a null text.
    const QString &intern(std::string_view utf8)
    {
        const auto found = m_texts.find(utf8);
        if (found != m_texts.end())
            return found->second;
        return m_texts.emplace(std::string(utf8), textOfUtf8(utf8)).first->second;
    }

private:
    struct Hash
    {
        using is_transparent = void;
        // Not noexcept, so that the map stores hashes instead of recomputing them.
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };
    std::unordered_map<std::string, QString, Hash, std::equal_to<>> m_texts;
};
