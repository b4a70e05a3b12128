// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/SampleBook.h"

#include "contacts/book/ABAddressBook.h"
#include "contacts/book/ChangeCause.h"
#include "contacts/book/RecordImporter.h"
#include "contacts/stores/open/OpenStore.h"

#include <QFile>
#include <QStandardPaths>

QString sampleBookPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        % QStringLiteral("/peoplenook/sample.sqlite");
}

Result<QString> sampleBook()
{
    const QString path = sampleBookPath();
    auto store = openStore(path);
    if (!store)
        return store.error();
    const auto book = ABAddressBook::open(std::move(*store));
    if (!book)
        return book.error();
    if (!(*book)->people().empty())
        return path;
    QFile people(QStringLiteral(":/sample/people.vcf"));
    if (!people.open(QIODevice::ReadOnly))
        return Error{ErrorKind::Io, people.errorString()};
    const ImportReport report =
        importFile(**book, recordSource(people.readAll(), RecordFormat::VCard), QStringLiteral("people.vcf"));
    if (report.error)
        return *report.error;
    return path;
}
