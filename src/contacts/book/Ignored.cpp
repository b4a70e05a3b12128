// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/Ignored.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

constexpr QLatin1StringView kConditionKey("condition");
constexpr QLatin1StringView kUidsKey("uids");
constexpr QLatin1StringView kFoundKey("found");

} // namespace

QString Ignored::id() const
{
    constexpr qsizetype kDigits = 12;
    Ignored sorted = *this;
    sorted.uids.sort();
    const QByteArray digest = QCryptographicHash::hash(ignoredToJson(sorted), QCryptographicHash::Sha256).toHex();
    return QString::fromLatin1(digest.first(kDigits));
}

QByteArray ignoredToJson(const Ignored &ignored)
{
    QJsonObject json{{kUidsKey, QJsonArray::fromStringList(ignored.uids)}};
    if (!ignored.condition.isEmpty()) {
        json.insert(kConditionKey, ignored.condition);
        json.insert(kFoundKey, ignored.found);
    }
    return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

std::optional<Ignored> ignoredFromJson(const QByteArray &json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    Ignored ignored{document[kConditionKey].toString(), {}, document[kFoundKey].toString()};
    const QJsonArray uids = document[kUidsKey].toArray();
    for (const auto &uid : uids)
        ignored.uids += uid.toString();
    return ignored.uids.isEmpty() ? std::nullopt : std::optional(ignored);
}
