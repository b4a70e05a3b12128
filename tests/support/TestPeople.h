// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABAddressBook.h"

#include <QByteArray>
#include <QStringList>

#include <initializer_list>

// Short forms for people in tests.

/// A record from its JSON form; a single quote stands for a double one. Ends the test program when it is malformed.
StoredRecord recordFromText(QByteArray json);

/// An address book of these people on a store in memory, made the shared one.
std::shared_ptr<ABAddressBook> sharedBookOf(const std::vector<StoredRecord> &people);
/// The same from JSON texts.
std::shared_ptr<ABAddressBook> sharedBookOf(std::initializer_list<QByteArray> people);

/// The whole address book in JSON, a person a line.
QByteArray textOf(const ABAddressBook &book);

/// The cases in a file of tests/data: lines between empty ones, without their indentation; a line with # is a comment.
QList<QStringList> blocksOf(const QString &path);

/// The rows of a data-driven test, one a case of that file: the column "lines".
void addBlocks(const QString &path);
