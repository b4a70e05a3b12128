// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/AddressBookStore.h"

#include <optional>

// The stories of tests/data/book/stories.txt, which says how they are written.

/// The rows of a data-driven test, with the columns "kind" and "story": those for these kinds of stores.
void addStories(std::initializer_list<const char *> kinds);

/// Opens another store on one address book each time, like another program would.
using StoreOpener = std::function<std::unique_ptr<AddressBookStore>()>;
/// Steps that only one kind of store has. Nothing: the line is a program's.
using BesideStep = std::function<std::optional<QStringList>(const QString &name, const QString &rest)>;

/// Compares what the programs answer with the story, where FILE stands for @p file.
void playStory(const QStringList &story, const StoreOpener &open, const BesideStep &beside, const QString &file = {});

/// People as stories tell of them; or the error.
QStringList textsOf(const Result<std::vector<StoredRecord>> &people);
