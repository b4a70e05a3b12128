// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/model/PersonRecord.h"

#include <QStringList>

#include <memory>
#include <string>
#include <string_view>

/// Reads many records in their JSON forms, one thread at a time. It reuses its memory, and equal labels, services,
/// cities and countries share one text.
class RecordJsonReader
{
public:
    enum class Form {
        Line, ///< from recordToJson(): unknown keys are refused, partial reads reported
        Document, ///< from recordToDocument(): keys of later versions are skipped and reported
    };

    explicit RecordJsonReader(Form form);
    ~RecordJsonReader();
    RecordJsonReader(const RecordJsonReader &) = delete;
    RecordJsonReader &operator=(const RecordJsonReader &) = delete;

    struct Person
    {
        QString uid; ///< null (isNull) without one
        std::shared_ptr<PersonRecord> record;
        QStringList remarks; ///< of a line that was read only in part: a repeated key, incomplete base64
        std::string pictureName; ///< of a document: its picture's name; empty without one
        std::string unknownKey; ///< of a document: the first unknown key; empty without one
    };

    /// Keys may be in any order. Invalid: it cannot be read; the reason names the key.
    Result<Person> read(std::string_view json);

private:
    class Private;
    std::unique_ptr<Private> d;
};
