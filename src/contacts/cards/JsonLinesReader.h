// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/cards/RecordJsonReader.h"
#include "contacts/cards/RecordSource.h"

/// Reads a file with one record per line in the JSON form of RecordJson.h. Skips blank lines and a byte-order mark; an
/// unreadable line is a lost record. Lines read only in part are reported too.
class JsonLinesReader : public RecordSource
{
public:
    explicit JsonLinesReader(const QByteArray &data);

    ImportedRecord next() override;
    std::vector<ImportProblem> takeProblems() override { return std::exchange(m_problems, {}); }
    qint64 bytesRead() const override { return m_position; }
    qint64 totalBytes() const override { return m_data.size(); }

private:
    QByteArray m_data;
    qsizetype m_position = 0;
    RecordJsonReader m_reader;
    qint64 m_line = 0;
    std::vector<ImportProblem> m_problems;
};
