// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/model/TextPool.h"

#include "contacts/model/Utf8Text.h"

const QString &TextPool::intern(std::string_view utf8)
{
    const auto found = m_texts.find(utf8);
    if (found != m_texts.end())
        return found->second;
    return m_texts.emplace(std::string(utf8), textOfUtf8(utf8)).first->second;
}
