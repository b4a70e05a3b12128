// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ContactText.h"
#include "export/office/ZipPackage.h"

#include <span>

/// Writes a word-processing document in Office Open XML (ECMA-376), created at @p time: a heading and lines per
/// contact, page numbers at the bottom. No tables: word processors take minutes over thousands of them. Like
/// ZipPackage::writeTo(); changes that make texts safe are counted in @p repairs.
Result<void> writeDocxDocument(
    const QDateTime &time, std::span<const PersonRow> rows, QIODevice &target, TextRepairs &repairs);
