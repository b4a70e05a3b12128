// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/JsonLinesReader.h"

JsonLinesReader::JsonLinesReader(const QByteArray &data)
    : m_data(data), m_position(data.startsWith("\xEF\xBB\xBF") ? 3 : 0), m_reader(RecordJsonReader::Form::Line)
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
        auto person = m_reader.read({line.data(), static_cast<std::size_t>(line.size())});
        if (!person) {
            m_problems.push_back({ImportProblem::Kind::LostRecord, m_line, person.error().text});
            continue;
        }
        for (const QString &remark : person->remarks)
            m_problems.push_back({ImportProblem::Kind::LostLine, m_line, remark});
        return {person->uid, std::move(person->record), m_line};
    }
    return {};
}
