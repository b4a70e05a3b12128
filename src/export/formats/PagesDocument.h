// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ContactText.h"
#include "export/formats/IwaStyles.h"

#include <span>

/// A Pages document: a heading and lines per contact, in one flow of text. Built without a template;
/// docs/office-formats.md describes its contents.
///
/// Memory does not grow with the rows: the text is one message of the format, so the rows are walked to measure it, for
/// the text, and for the positions of styles.
class PagesDocument
{
public:
    /// The rows must outlive the document. @p time and @p name distinguish documents.
    PagesDocument(const QDateTime &time, const QString &name, std::span<const PersonRow> rows, LineOrder order);

    /// Like ZipPackage::writeTo(); changes that make texts safe are counted in @p repairs. Once only.
    Result<void> writeTo(QIODevice &target, TextRepairs &repairs);

private:
    /// Calls @p take with each paragraph, which ends in a line feed, and whether it is a heading.
    template <typename Taker> void walk(Taker take, TextRepairs *repairs = nullptr) const;
    template <typename Taker> void walkRuns(Taker take) const;
    void writeBody(quint64 body, quint64 section, TextRepairs &repairs);
    void writeStyles(quint64 theme);

    std::span<const PersonRow> m_rows;
    LineOrder m_order;
    IwaPackage m_package;
    IwaStyles m_styles;
    quint64 m_heading;
    quint64 m_line;
};
