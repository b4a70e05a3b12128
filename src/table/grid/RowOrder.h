// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "table/grid/PersonRows.h"

#include <QLocale>

struct SortDescriptor
{
    Field field;
    Qt::SortOrder order = Qt::AscendingOrder;

    friend bool operator==(const SortDescriptor &, const SortDescriptor &) = default;
};

/// The sorted rows. Texts compare by locale, ignoring case, runs of digits by value. Rows without the value come last
/// in both directions; equal rows keep their order. Later descriptors decide between rows that earlier ones find equal.
PersonRows sortedRows(const PersonRows &rows, const std::vector<SortDescriptor> &descriptors, const QLocale &locale);
