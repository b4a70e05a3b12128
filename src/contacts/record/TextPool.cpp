// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/record/TextPool.h"

const QString &TextPool::intern(std::string_view utf8)
{
    const auto found = m_texts.find(utf8);
    if (found != m_texts.end())
        return found->second;
    const QString text =
        utf8.empty() ? QStringLiteral("") : QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    return m_texts.emplace(std::string(utf8), text).first->second;
}
