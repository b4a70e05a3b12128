// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/grid/BirthdayText.h"

namespace {

constexpr int kLastYear = 9999;
constexpr int kYearsOfTwoDigits = 100;

QDate isoDate(const QString &text)
{
    const QDate date = QDate::fromString(text, QStringLiteral("yyyy-MM-dd"));
    if (date.isValid())
        return date;
    const QString noYear = QStringLiteral("--");
    return text.startsWith(noYear)
        ? QDate::fromString(QString::number(kNoYear) + text.mid(1), QStringLiteral("yyyy-MM-dd"))
        : QDate();
}

QDate localeDate(const QString &text, const QLocale &locale, QDate today)
{
    const QString fourDigits = QStringLiteral("yyyy");
    QString format = locale.dateFormat(QLocale::ShortFormat);
    const bool hasTwoDigits = !format.contains(fourDigits);
    const QString twoDigitFormat = format;
    if (hasTwoDigits)
        format.replace(QStringLiteral("yy"), fourDigits);
    if (const QDate date = locale.toDate(text, format); date.isValid() || !hasTwoDigits)
        return date;
    QDate date = locale.toDate(text, twoDigitFormat);
    while (date.isValid() && date.addYears(kYearsOfTwoDigits) <= today)
        date = date.addYears(kYearsOfTwoDigits);
    return date;
}

} // namespace

QString birthdayText(QDate birthday)
{
    return birthday.toString(birthday.year() == kNoYear ? QStringLiteral("--MM-dd") : QStringLiteral("yyyy-MM-dd"));
}

Result<QDate> birthdayFromText(const QString &text, const QLocale &locale, QDate today)
{
    const QString trimmed = text.trimmed();
    QDate date = isoDate(trimmed);
    if (!date.isValid())
        date = localeDate(trimmed, locale, today);
    if (date.isValid() && date.year() >= 1 && date.year() <= kLastYear)
        return date;
    return Error{ErrorKind::Invalid,
        QStringLiteral("Birthday: \"%1\" is no date; write it like %2 or %3")
            .arg(text, QStringLiteral("1990-12-31"), locale.toString(QDate(1990, 12, 31), QLocale::ShortFormat))};
}
