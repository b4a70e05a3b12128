// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <QByteArray>

// What a content line says beyond what a record holds. Lines are plain text of vCard 3.0, folded or not.

/// @p lines, of which the first is to replace @p old, with what only @p old says: parameters that say nothing about the
/// value or its label, a post-office box and an extended address, units of an organisation below the department.
QByteArray withSurplusOf(const QByteArray &old, const QByteArray &lines);

/// What stands behind the ':' of a line.
QByteArray valueOfLine(const QByteArray &line);

/// Whether @p line is the delivery label of the address in the line @p address.
bool isLabelOfAddress(const QByteArray &line, const QByteArray &address);

/// What @p fileAs, an X-EVOLUTION-FILE-AS line of a person who was @p before, becomes with @p after: null where its
/// text was the user's own, empty where nothing is left to file by.
QByteArray followingFileAs(const QByteArray &fileAs, const PersonRecord &before, const PersonRecord &after);
