// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestPeople.h"

#include "contacts/cards/RecordJson.h"
#include "support/MemoryStore.h"

#include <QFile>
#include <QTest>

StoredRecord recordFromText(QByteArray json)
{
    json.replace('\'', '"');
    const auto imported = recordFromJson(json.toStdString());
    if (!imported)
        qFatal("%s: %s", json.constData(), qPrintable(imported.error().text));
    return {imported->uid, imported->record};
}

std::shared_ptr<ABAddressBook> sharedBookOf(const std::vector<StoredRecord> &people)
{
    const auto book = ABAddressBook::open(std::make_unique<MemoryStore>());
    for (const auto &[uid, record] : people)
        (*book)->addRecord(std::make_shared<ABPerson>(uid, record));
    if (!(*book)->save())
        qFatal("a store in memory refused a save");
    ABAddressBook::setSharedAddressBook(*book);
    return *book;
}

std::shared_ptr<ABAddressBook> sharedBookOf(std::initializer_list<QByteArray> people)
{
    std::vector<StoredRecord> records;
    for (const auto &person : people)
        records.push_back(recordFromText(person));
    return sharedBookOf(records);
}

QByteArray textOf(const ABAddressBook &book)
{
    QByteArray text;
    const PeopleSnapshot everybody = book.snapshot();
    for (const auto &[person, record] : *everybody)
        text += recordToJson(person->uniqueId(), *record) + '\n';
    return text;
}

QList<QStringList> blocksOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s: %s", qUtf8Printable(path), qUtf8Printable(file.errorString()));
    QList<QStringList> blocks{{}};
    for (const QString &line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        if (const QString text = line.trimmed(); !text.isEmpty() && !text.startsWith(u'#'))
            blocks.back() += text;
        else if (!blocks.back().isEmpty())
            blocks.push_back({});
    }
    if (blocks.back().isEmpty())
        blocks.removeLast();
    return blocks;
}

void addBlocks(const QString &path)
{
    QTest::addColumn<QStringList>("lines");
    for (const QStringList &lines : blocksOf(path))
        QTest::newRow(qUtf8Printable(lines.front())) << lines;
}
