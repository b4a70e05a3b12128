// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ContactText.h"
#include "export/formats/IwaStyles.h"

#include <span>

/// A Pages document: a heading and lines a contact, in one flow of text. Made from nothing, without a template;
/// docs/office-formats.md says what is in it and why.
///
/// Memory does not grow with the rows: the text is one message of the format, so the rows are walked to measure it, for
/// the text and for where each style begins.
class PagesDocument
{
public:
    /// The rows must outlive the document. @p time and @p name tell documents apart.
    PagesDocument(const QDateTime &time, const QString &name, std::span<const PersonRow> rows, LineOrder order);

    /// Like ZipPackage::writeTo(); what was changed to make texts safe is added to @p repairs. Once only.
    Result<void> writeTo(QIODevice &target, TextRepairs &repairs);

private:
    /// Calls with each paragraph, which ends in a line feed, and whether it is a heading.
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
