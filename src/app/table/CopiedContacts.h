// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"

#include <QModelIndexList>

// What the clipboard gets.

/// As spreadsheets take it: a line for each row, with tabs between its cells.
void copyCells(QModelIndexList cells);
void copyAsCards(const QList<ABPersonPtr> &people);
