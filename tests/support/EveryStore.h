// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/stores/open/OpenStore.h"
#include "contacts/stores/sqlite/SqliteStore.h"
#include "support/FailingStore.h"
#include "support/MemoryStore.h"
#include "support/PrivateDesktop.h"

#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <functional>
#include <memory>

/// Address books on each kind of store, for tests of what all of them promise.
class EveryStore
{
public:
    static constexpr std::array kKinds{"memory", "sqlite", "failing", "eds"};

    /// The rows of a data-driven test.
    static void addRows()
    {
        QTest::addColumn<QString>("kind");
        for (const char *kind : kKinds)
            QTest::newRow(kind) << QString::fromLatin1(kind);
    }

    /// Why there is no store of this kind here; empty: there is one.
    QString problemOf(const QString &kind) const { return keepsCards(kind) ? m_desktop.problem() : QString(); }

    /// The desktop's address books are cards: a line kept for a value that is not there has no place in one, and their
    /// order is that of the uids.
    static bool keepsCards(const QString &kind) { return kind == QStringLiteral("eds"); }

    /// Opens another store on one new address book each time, like another program would.
    using Opener = std::function<std::unique_ptr<AddressBookStore>()>;
    Opener openerOf(const QString &kind, const Clock &clock = currentTime)
    {
        if (keepsCards(kind))
            return [where = QStringLiteral("eds:book%1").arg(m_usedBooks++)] { return std::move(*openStore(where)); };
        if (kind == QStringLiteral("sqlite"))
            return [folder = std::make_shared<QTemporaryDir>(), clock] {
                return std::move(*SqliteStore::open(folder->filePath(QStringLiteral("book")), clock));
            };
        const auto book = std::make_shared<MemoryStore::Book>();
        if (kind == QStringLiteral("memory"))
            return [book, clock] { return std::make_unique<MemoryStore>(book, clock); };
        return [book, clock] { return std::make_unique<FailingStore>(std::make_unique<MemoryStore>(book, clock), 0); };
    }

private:
    PrivateDesktop m_desktop{20};
    int m_usedBooks = 0;
};
