// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ExportReport.h"
#include "table/grid/PersonRows.h"

#include <functional>
#include <span>

class QIODevice;

// Shared by the writers of documents.

/// Says which contacts are on further sheets; empty if one sheet holds all.
QString furtherSheetsRemark(std::span<const PersonRow> rows, std::size_t rowsInSheet);

/// Writes a new file at the base path with @p extension, completely or not at all, using @p write, which counts the
/// changes that make texts safe.
ExportReport exportDocument(const QString &basePath, QLatin1StringView extension,
    const std::function<Result<void>(QIODevice &, TextRepairs &)> &write);
