// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ContactText.h"
#include "export/office/ZipPackage.h"

#include <span>

class QXmlStreamWriter;

/// A word-processing document in Office Open XML (ECMA-376): a heading and lines per contact, page numbers at the
/// bottom. No tables: word processors take minutes over thousands of them.
class DocxDocument
{
public:
    /// The rows must outlive the document. @p time is its creation time.
    DocxDocument(QDateTime time, std::span<const PersonRow> rows) : m_time(std::move(time)), m_rows(rows) { }

    /// Like ZipPackage::writeTo(); changes that make texts safe are counted in @p repairs.
    Result<void> writeTo(QIODevice &target, TextRepairs &repairs) const;

private:
    void writeBody(QXmlStreamWriter &xml, TextRepairs &repairs) const;

    QDateTime m_time;
    std::span<const PersonRow> m_rows;
};
