// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

/// A value of a property, read once to be compared with many others.
class SaidValue
{
public:
    SaidValue(ABProperty property, const ABMultiValue::Value &value);

    /// Whether @p whole, of the same property, says everything that this says: for dictionaries, part by part; missing
    /// or empty parts say nothing. Texts say the same despite different spelling: case, blanks or punctuation, the
    /// country code of a phone number, "https://" of a web page. In doubt, they differ.
    bool isSaidBy(const SaidValue &whole) const;

private:
    struct Text
    {
        ABKey key; ///< of a dictionary
        QString written;
        QString plain; ///< only what counts in a comparison
        QString digits; ///< of a phone number without letters; empty for others
        bool isInternational = false; ///< these
    };
    static Text textOf(ABProperty property, const QString &written);
    static bool sayTheSame(const Text &a, const Text &b);

    std::vector<Text> m_texts; // one, or those of a dictionary
};

inline bool isSaidBy(ABProperty property, const ABMultiValue::Value &part, const ABMultiValue::Value &whole)
{
    return SaidValue(property, part).isSaidBy({property, whole});
}
