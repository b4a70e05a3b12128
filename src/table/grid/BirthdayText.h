// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/model/ABProperties.h"

#include <QDate>
#include <QLocale>

/// YYYY-MM-DD, or --MM-DD without a year (ISO 8601:2000, 5.2.1.3; also RFC 6350, 4.3.1).
QString birthdayText(QDate birthday);

/// Reads birthdayText()'s format, and the locale's short date format with a four- or two-digit year. Two digits mean
/// the latest such year not after @p today. Anything else, including an empty text, is Invalid; the error names the
/// text.
Result<QDate> birthdayFromText(const QString &text, const QLocale &locale, QDate today);
