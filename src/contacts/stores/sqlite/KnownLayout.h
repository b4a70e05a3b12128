// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// What is known of an address book file of the present format without its header and first page, which say where the
/// tables are: every file has the same tables, so a damaged first page can be made from a new file's.
namespace KnownLayout {

/// The first pages of the tables of people and pictures and of their indexes, as a new file has them. A file that was
/// brought from an earlier format has others.
struct Roots
{
    quint32 contact = 2;
    quint32 contactIndex = 3;
    quint32 image = 4;
    quint32 imageIndex = 5;
};

/// By what stands on the pages of the file; those of a new file where nothing is found.
Roots foundIn(const QString &path);

/// Writes a new first page over that of the file, which nobody has open. False: that cannot be done.
bool rebuildFirstPage(const QString &path, const Roots &roots);

} // namespace KnownLayout
