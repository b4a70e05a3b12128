// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <vector>

/// One person from a file.
struct ImportedRecord
{
    QString uid; ///< null (isNull) if the file has none
    PersonRecordPtr record;
    qint64 line = 0; ///< its first line; lines count from 1
};

/// Something in a file that was not, or not completely, imported.
struct ImportProblem
{
    enum class Kind {
        LostLine, ///< an unreadable line or part of one; the rest of its record is read
        LostRecord, ///< a record that cannot be read
        NotAPerson, ///< a group or list, left out on purpose
    };
    Kind kind = Kind::LostLine;
    qint64 line = 0;
    QString reason; ///< English, no full stop, names the thing
};

/// A file of people, read one by one. One thread.
class RecordSource
{
public:
    virtual ~RecordSource() = default;

    /// The next person, with a null record at the end. Never fails as a whole: unreadable parts are skipped and
    /// reported by takeProblems().
    virtual ImportedRecord next() = 0;
    /// Problems since the last call, in file order.
    virtual std::vector<ImportProblem> takeProblems() = 0;
    /// How much of totalBytes() has been read, for showing progress.
    virtual qint64 bytesRead() const = 0;
    virtual qint64 totalBytes() const = 0;
};
