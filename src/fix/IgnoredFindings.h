// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/Ignored.h"
#include "fix/Finding.h"

#include <QHash>

#include <functional>
#include <span>

/// Knows which findings are ignored: one of a single contact while its problemPlaces() have the values that were
/// ignored; one of several contacts if each two of them are different people. A value.
class IgnoredFindings
{
public:
    IgnoredFindings() = default;
    explicit IgnoredFindings(std::vector<Ignored> entries);
    /// The book's. Not for the main thread.
    static Result<IgnoredFindings> of(ABAddressBook &book);

    /// What to remember so that the finding is ignored. Nothing if its contact is gone.
    static std::optional<Ignored> entryFor(const Finding &finding);
    static Ignored differentPeople(QStringList uids) { return {{}, std::move(uids), {}}; }

    bool areDifferent(const QString &uid, const QString &other) const;

    struct Split
    {
        ScanResult open;
        ScanResult ignored;
    };
    /// Of a scan of the shared address book. Not for the main thread.
    Split split(const ScanResult &result) const;
    /// By what the shared address book ignores; if that cannot be read, everything is open.
    static Split splitShared(const ScanResult &result);

private:
    bool ignores(const Finding &finding) const;
    bool areAllDifferent(const QStringList &uids) const;

    std::vector<Ignored> m_entries;
    QHash<QString, std::vector<std::size_t>> m_entriesOf; // ascending places of m_entries, by uid
};

/// In words: the condition's title with what was found, or that they are different people.
QString textOf(const Ignored &ignored);

/// For findLikelyDuplicates() among @p people, who must outlive it, as must @p ignored.
std::function<bool(std::size_t, std::size_t)> differenceAmong(
    std::span<const PersonSnapshot> people, const IgnoredFindings &ignored);
