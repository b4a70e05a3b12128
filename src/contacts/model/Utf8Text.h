// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <string_view>

inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Decodes UTF-8 unchanged: QString::fromUtf8() drops a leading U+FEFF, and a name that begins with one would seem
/// changed by another program as soon as it was saved. Never null.
inline QString textOfUtf8(std::string_view utf8)
{
    if (utf8.empty())
        return QStringLiteral("");
    QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    if (utf8.starts_with(kByteOrderMark))
        text.prepend(QChar(QChar::ByteOrderMark));
    return text;
}
