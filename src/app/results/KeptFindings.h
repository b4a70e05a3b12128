// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fix/IgnoredFindings.h"
#include "results/OutlineViewController.h"

#include <QJsonObject>

/// The findings that are left of a scan, to go on with them later: only what tells them apart, as they are examined
/// again by then.
class KeptFindings
{
public:
    explicit KeptFindings(const OutlineViewController &results);

    // In a small file for each address book, among the user's data. Losing it costs a scan.
    static KeptFindings load(const QString &bookName);
    void save(const QString &bookName) const;

    /// Those of a new examination that were kept, and what is ignored of it. Any thread.
    IgnoredFindings::Split examine() const;
    /// Selects the finding that was selected, if it is there.
    void select(OutlineViewController &results) const;

private:
    explicit KeptFindings(QJsonObject json) : m_json(std::move(json)) { }

    QJsonObject m_json;
};
