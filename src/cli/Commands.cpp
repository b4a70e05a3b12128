// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"

#include "contacts/open/OpenStore.h"

void CommandContext::report(const QString &line) const
{
    console.err << line.toStdString() << '\n';
}

std::shared_ptr<ABAddressBook> CommandContext::openAddressBook() const
{
    auto store = openStore(where);
    if (!store) {
        report(store.error().text);
        return nullptr;
    }
    auto book = ABAddressBook::open(std::move(*store));
    if (!book) {
        report(book.error().text);
        return nullptr;
    }
    ABAddressBook::setSharedAddressBook(*book);
    return *book;
}

std::string onOneLine(QString text)
{
    for (QChar &c : text) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = u' ';
    }
    return text.toStdString();
}
