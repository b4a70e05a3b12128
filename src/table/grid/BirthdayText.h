// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/model/ABProperties.h"

#include <QDate>
#include <QLocale>

/// What a cell shows: YYYY-MM-DD, or --MM-DD without a year (ISO 8601:2000, 5.2.1.3; also RFC 6350, 4.3.1).
QString birthdayText(QDate birthday);

/// Reads what birthdayText() writes, and the locale's short form of a date, with all four digits of the year or with
/// two. Two digits mean the last such year that is not after @p today.
/// Anything else, an empty text too, is Invalid; the text of the error names it.
Result<QDate> birthdayFromText(const QString &text, const QLocale &locale, QDate today);
