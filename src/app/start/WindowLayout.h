// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class ColumnLook;
class ContactTableModel;
class QMainWindow;

// Place and size of the main window and the columns of its table, as the user left them.

/// False: the columns have no widths yet.
bool restoreLayout(QMainWindow &window, ContactTableModel &table, ColumnLook &look);
/// @p isInPlace is false for a window that another one made stand aside, or it would wander from start to start.
void saveLayout(const QMainWindow &window, bool isInPlace, const ContactTableModel &table, const ColumnLook &look);
