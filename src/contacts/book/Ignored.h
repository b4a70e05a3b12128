// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include <optional>
#include <vector>

/// What the user has called fine: a finding of one contact, or several contacts that are different people. Kept with
/// the address book. Contacts are known by their uids, and the finding by what was found, so that it comes back when
/// that changes.
struct Ignored
{
    QString condition; ///< the key of the finding's condition; empty: the contacts are different people
    QStringList uids; ///< one, or the different people
    QString found; ///< what met the condition; empty for different people

    /// Equal for equal contents, whatever the order of the uids.
    QString id() const;
    friend bool operator==(const Ignored &, const Ignored &) = default;
};

/// The form in which stores keep it.
QByteArray ignoredToJson(const Ignored &ignored);
/// Nothing for other texts.
std::optional<Ignored> ignoredFromJson(const QByteArray &json);
