// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/RecordJson.h"
#include "contacts/stores/sqlite/SqliteStore.h"
#include "support/SqlQuestion.h"

/// What an address book file holds, where nothing is wrong with it: @p saves, the rows of its history, its people.
inline QString heldText(int saves, const QStringList &history, const std::vector<StoredRecord> &people)
{
    QStringList texts;
    for (const auto &[uid, record] : people)
        texts += QString::fromStdString(recordToJson(uid, *record));
    texts.sort();
    return (QStringList(QString::number(saves)) + history + texts).join(u'\n');
}

/// The same of a file; or what is wrong with it.
inline QString heldBy(const QString &path)
{
    const auto store = SqliteStore::open(path);
    const auto people = store ? (*store)->loadAll() : Result<std::vector<StoredRecord>>(store.error());
    if (!people)
        return people.error().text;
    const QStringList integrity = askSql(path, "PRAGMA integrity_check; PRAGMA foreign_key_check");
    if (integrity != QStringList(QStringLiteral("ok")))
        return integrity.join(u'\n');
    const QStringList history = askSql(path, "SELECT revision || ' ' || action || ' ' || uid FROM history ORDER BY id");
    return heldText(askSql(path, "SELECT count(*) FROM save").value(0).toInt(), history, *people);
}
