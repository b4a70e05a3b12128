// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/RecordSource.h"

#include <memory>

/// Reads vCard 2.1, 3.0 and 4.0 as real programs write them, even mixed in one file.
///
/// Sources: RFC 2426 (3.0), RFC 6350 (4.0) and the versit vCard 2.1 paper. Reads UTF-8, UTF-16 with and without
/// byte-order mark, declared charsets, otherwise windows-1252; any line ends. A card ends at its END, the next BEGIN,
/// or the end of the file. What a card says beyond the record is in PersonRecord::keptLines. Linear in the size of any
/// data.
class VCardReader : public RecordSource
{
public:
    explicit VCardReader(const QByteArray &data);
    ~VCardReader() override;

    ImportedRecord next() override;
    std::vector<ImportProblem> takeProblems() override;
    qint64 bytesRead() const override;
    qint64 totalBytes() const override;

private:
    class Private;
    std::unique_ptr<Private> d;
};
