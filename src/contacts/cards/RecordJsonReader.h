// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/model/PersonRecord.h"

#include <QStringList>

#include <memory>
#include <string>
#include <string_view>

/// Reads records in their JSON forms. One reader for many records, and for one thread at a time: it reuses its memory,
/// and equal labels, services, cities and countries share one text.
class RecordJsonReader
{
public:
    enum class Form {
        Line, ///< as recordToJson() writes it: what is unknown is refused, and what can be read only in part is told
        Document, ///< as recordToDocument() writes it: what a later version added is passed over and told
    };

    explicit RecordJsonReader(Form form);
    ~RecordJsonReader();
    RecordJsonReader(const RecordJsonReader &) = delete;
    RecordJsonReader &operator=(const RecordJsonReader &) = delete;

    struct Person
    {
        QString uid; ///< null (isNull): there is none
        std::shared_ptr<PersonRecord> record;
        QStringList remarks; ///< of a line: a repeated key, incomplete base64; what could be read of it is there
        std::string pictureName; ///< of a document: what it calls its picture; empty: it has none
        std::string unknownKey; ///< of a document: the first key that this version does not know; empty: it knows all
    };

    /// How many bytes must be readable behind a text that is read in place.
    static constexpr std::size_t kPadding = 64;
    /// @p json with kPadding readable bytes behind it, whatever they hold.
    /// Invalid: it cannot be read; the reason names the key. Any order of keys.
    Result<Person> readInPlace(std::string_view json);
    /// The same for any text, which is copied.
    Result<Person> read(std::string_view json);

private:
    class Private;
    std::unique_ptr<Private> d;
};
