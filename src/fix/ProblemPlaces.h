// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fix/Finding.h"

/// A value that has the problem of a finding.
struct ProblemPlace
{
    QString title; ///< the property's, with the value's label
    QString text;
    QList<qsizetype> wrong = {}; ///< which of its letters are wrong
    QString remark = {}; ///< what is wrong with it as a whole
};

/// Where the problem is in the finding's person as it is now: which letters of which value are wrong, which values are
/// repeated, who else has the shared address, how the duplicates differ. Changes nothing.
std::vector<ProblemPlace> problemPlaces(const Finding &finding);
