// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scan/ScanResult.h"

#include <memory>
#include <span>

/// The people that a finder looks at, in the order of the address book.
using People = std::span<const PersonSnapshot>;

/// Looks for one condition: at everybody, one block of people after the other, and then says what it found.
///
/// In blocks, because a scan lets all its finders look at some people before it goes on to the next: a large address
/// book does not fit into the processor's caches, and fetching it once takes longer than all the checks.
class Finder
{
public:
    virtual ~Finder() = default;

    /// The blocks are consecutive parts of one array that outlives the finder's work.
    virtual void look(People block) = 0;
    /// After the last block, once.
    virtual Findings takeFindings() = 0;
};

using FinderPtr = std::unique_ptr<Finder>;

/// Finds the people whose record, by itself, gives reason to object.
template <typename Objection> class ObjectionFinder : public Finder
{
public:
    explicit ObjectionFinder(Objection objection) : m_objection(objection) { }

    void look(People block) override
    {
        for (const auto &[person, record] : block) {
            if (m_objection(*record))
                m_found.push_back(person);
        }
    }
    Findings takeFindings() override { return std::move(m_found); }

private:
    Objection m_objection;
    std::vector<ABPersonPtr> m_found;
};

template <typename Objection> FinderPtr finderOfPeopleWhere(Objection objection)
{
    return std::make_unique<ObjectionFinder<Objection>>(objection);
}
