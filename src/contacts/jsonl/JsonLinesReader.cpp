// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/jsonl/JsonLinesReader.h"

#include "contacts/jsonl/RecordJson.h"

JsonLinesReader::JsonLinesReader(const QByteArray &data)
    : m_data(data), m_position(data.startsWith("\xEF\xBB\xBF") ? 3 : 0)
{ }

ImportedRecord JsonLinesReader::next()
{
    while (m_position < m_data.size()) {
        const qsizetype newline = m_data.indexOf('\n', m_position);
        const qsizetype end = newline < 0 ? m_data.size() : newline;
        const QByteArrayView line = QByteArrayView(m_data).sliced(m_position, end - m_position).trimmed();
        m_position = newline < 0 ? end : end + 1;
        ++m_line;
        if (line.isEmpty())
            continue;
        QStringList remarks;
        auto record = recordFromJson({line.data(), static_cast<std::size_t>(line.size())}, &remarks);
        if (!record) {
            m_problems.push_back({ImportProblem::Kind::LostRecord, m_line, record.error().text});
            continue;
        }
        for (const QString &remark : remarks)
            m_problems.push_back({ImportProblem::Kind::LostLine, m_line, remark});
        record->line = m_line;
        return std::move(record.value());
    }
    return {};
}
