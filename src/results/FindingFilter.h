// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "results/PersonItem.h"

#include <QStringList>

/// Which findings are shown: those that have each word of a text in the name, in what is wrong, or in some text of the
/// contact as it is now, whatever the case. Without words all of them.
class FindingFilter
{
public:
    explicit FindingFilter(const QString &text = {});

    bool isEmpty() const { return m_words.isEmpty(); }
    bool shows(const PersonItem &finding) const;

private:
    QStringList m_words;
};
