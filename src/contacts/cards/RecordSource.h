// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <vector>

/// One person as a file describes it.
struct ImportedRecord
{
    QString uid; ///< null (isNull) when the file names none
    PersonRecordPtr record;
    qint64 line = 0; ///< where it begins; lines count from 1
};

/// Something in a file that does not become (part of) a person.
struct ImportProblem
{
    enum class Kind {
        LostLine, ///< one unreadable line, or a part of one; the rest of its record is read
        LostRecord, ///< a whole record that cannot be read
        NotAPerson, ///< a group or a list: read, understood, and left out on purpose
    };
    Kind kind = Kind::LostLine;
    qint64 line = 0;
    QString reason; ///< English, no full stop, names the thing
};

/// A file of people, read one after the other. For one thread.
class RecordSource
{
public:
    virtual ~RecordSource() = default;

    /// The next person, or one with a null record at the end. Never fails as a whole: what cannot be read is reported
    /// through takeProblems() and passed over.
    virtual ImportedRecord next() = 0;
    /// What was met since the last call, in file order.
    virtual std::vector<ImportProblem> takeProblems() = 0;
    /// How many of totalBytes() are behind the reader; for showing progress.
    virtual qint64 bytesRead() const = 0;
    virtual qint64 totalBytes() const = 0;
};
