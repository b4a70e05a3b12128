// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ExportReport.h"
#include "table/grid/PersonRows.h"

#include <QDateTime>

#include <functional>
#include <span>

class QIODevice;

// What the writers of office documents have in common.

/// Gives the moment that documents carry.
using ExportClock = std::function<QDateTime()>;

/// Says which contacts stand on further sheets than the first, where that cannot hold all; else empty.
QString furtherSheetsRemark(std::span<const PersonRow> rows, std::size_t rowsInSheet);

/// Adds @p extension to the base path and writes a new file there with @p write, whole or not at all.
/// @p write counts what it changes to make texts safe.
ExportReport exportOffice(const QString &basePath, const QString &extension,
    const std::function<Result<void>(QIODevice &, TextRepairs &)> &write);
