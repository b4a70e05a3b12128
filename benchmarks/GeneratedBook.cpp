// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "GeneratedBook.h"

#include "contacts/stores/sqlite/SqliteStore.h"
#include "generator/ContactGenerator.h"

#include <QTemporaryDir>

#include <cstdint>
#include <jemalloc/jemalloc.h>
#include <map>

const std::vector<StoredRecord> &generatedPeople(qint64 count)
{
    static std::map<qint64, std::vector<StoredRecord>> made;
    auto &people = made[count];
    if (people.empty()) {
        ContactGenerator generator(count, 1);
        for (StoredRecord person = generator.next(); person.record; person = generator.next())
            people.push_back(person);
    }
    return people;
}

QString generatedBook(qint64 count)
{
    static const QTemporaryDir folder;
    static std::map<qint64, QString> made;
    QString &path = made[count];
    if (path.isEmpty()) {
        path = folder.filePath(QString::number(count));
        std::vector<RecordChange> additions;
        for (const auto &[uid, record] : generatedPeople(count))
            additions.push_back({uid, nullptr, record});
        auto store = SqliteStore::open(path);
        if (!store || !(*store)->commit(additions))
            qFatal("no address book could be made");
    }
    return path;
}

double allocatedBytes()
{
    std::uint64_t epoch = 1; // has the figures brought up to date
    std::size_t bytes = 0;
    std::size_t size = sizeof bytes;
    mallctl("epoch", nullptr, nullptr, &epoch, sizeof epoch);
    mallctl("stats.allocated", &bytes, &size, nullptr, 0);
    return double(bytes);
}
