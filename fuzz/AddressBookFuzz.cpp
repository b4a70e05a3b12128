// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/SqliteStore.h"
#include "fuzz/FuzzTarget.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

QString workFolder()
{
    // In memory where there is such a place: a run of the fuzzer makes very many files.
    const QString memory = QStringLiteral("/dev/shm");
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + QStringLiteral("/peoplenook-fuzz-XXXXXX");
}

/// Everything that a program does with an address book as soon as it has opened one.
void use(SqliteStore &store)
{
    const auto people = store.loadAll();
    if (!people)
        return;
    static_cast<void>(store.takeChangesFromOutside());
    auto record = std::make_shared<PersonRecord>();
    record->setText(kABNoteProperty, QStringLiteral("new"));
    const QString uid = QStringLiteral("a uid of our own");
    if (!store.commit({{uid, nullptr, record}}))
        return;
    if (!people->empty())
        static_cast<void>(store.commit({{people->front().uid, people->front().record, record}}));
    static_cast<void>(store.commit({{uid, record, nullptr}}));
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder(workFolder());
    const QString path = folder.filePath(QStringLiteral("book"));
    QFile file(path);
    demand(file.open(QIODevice::WriteOnly) && file.write(bytesOf(data, size)) == qint64(size), "room for the file");
    file.close();
    {
        const auto store = SqliteStore::open(path);
        if (store)
            use(**store);
    }
    // The file, what belongs to it, and the copy of one of an earlier format.
    for (const QString &name : QDir(folder.path()).entryList(QDir::Files))
        QFile::remove(folder.filePath(name));
    return 0;
}
