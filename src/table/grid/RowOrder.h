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

/// The rows in another order. Texts are compared as the locale does, capitals and small letters alike, runs of digits
/// by their value. Rows without the value come last in both orders; rows that compare equal keep their order. The first
/// descriptor decides, the next ones where it finds rows equal.
PersonRows sortedRows(const PersonRows &rows, const std::vector<SortDescriptor> &descriptors, const QLocale &locale);
