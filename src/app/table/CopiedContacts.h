// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"

#include <QModelIndexList>

class QAbstractItemView;

// What the clipboard gets.

/// As spreadsheets take it: a line for each row, with tabs between its cells.
void copyCells(QModelIndexList cells);
/// Several rows are meant as rows; in a single one the current cell is.
void copyCellOrRows(const QAbstractItemView &view);
void copyAsCards(const QList<ABPersonPtr> &people);
