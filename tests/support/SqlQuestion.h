// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFile>
#include <QStringList>

#include <sqlite3.h>

/// The first column of each row that an address book file answers with, past all code of ours; at the end an error.
inline QStringList askSql(const QString &path, const char *sql)
{
    sqlite3 *database = nullptr;
    sqlite3_open(QFile::encodeName(path).constData(), &database);
    QStringList rows;
    const auto take = [](void *list, int, char **values, char **) {
        *static_cast<QStringList *>(list) += QString::fromUtf8(values[0]);
        return 0;
    };
    if (sqlite3_exec(database, sql, take, &rows, nullptr) != SQLITE_OK)
        rows += QString::fromUtf8(sqlite3_errmsg(database));
    sqlite3_close(database);
    return rows;
}
