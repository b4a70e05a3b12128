// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/EdsIgnored.h"

#include "base/Folders.h"
#include "contacts/stores/eds/EdsJournal.h"

#include <QLockFile>
#include <QSet>

#include <algorithm>

namespace EdsIgnored {

namespace {

QString fileIn(const QString &bookFolder)
{
    return bookFolder % QStringLiteral("/ignored.jsonl");
}

} // namespace

Result<std::vector<Ignored>> read(const QString &bookFolder)
{
    std::vector<Ignored> ignored;
    QFile file(fileIn(bookFolder));
    if (!file.exists())
        return ignored;
    if (!file.open(QIODevice::ReadOnly))
        return Error{ErrorKind::Io, file.fileName() % QStringLiteral(": cannot be read: ") % file.errorString()};
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (auto entry = ignoredFromJson(line))
            ignored.push_back(std::move(*entry));
    }
    return ignored;
}

Result<void> change(const QString &bookFolder, const std::vector<Ignored> &added, const QStringList &removedIds)
{
    constexpr int kPatienceMs = 5000;
    const QString path = fileIn(bookFolder);
    makePrivateFolder(bookFolder); // else the lock says why
    QLockFile lock(path % QStringLiteral(".lock"));
    if (!lock.tryLock(kPatienceMs))
        return Error{ErrorKind::Unavailable, path % QStringLiteral(": another program is busy with it")};
    auto ignored = read(bookFolder);
    if (!ignored)
        return ignored.error();
    QSet<QString> known;
    std::erase_if(*ignored, [&](const Ignored &entry) { return removedIds.contains(entry.id()); });
    for (const Ignored &entry : *ignored)
        known.insert(entry.id());
    for (const Ignored &entry : added) {
        if (!known.contains(entry.id()))
            ignored->push_back(entry);
        known.insert(entry.id());
    }
    QByteArray lines;
    for (const Ignored &entry : *ignored)
        lines += ignoredToJson(entry) + '\n';
    return writeDurably(path, lines);
}

} // namespace EdsIgnored
