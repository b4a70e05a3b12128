// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/Salvage.h"
#include "contacts/stores/sqlite/SqliteStore.h"
#include "support/MemoryStore.h"
#include "support/SqlQuestion.h"
#include "support/Stories.h"

#include <QTemporaryDir>
#include <QTest>

/// Several programs with one address book, in a file and in the memory that stands in for one; EdsStoreTest tells the
/// same stories of the desktop's.
class SharedBookTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stories_data() { addStories({"memory", "sqlite"}); }
    void stories()
    {
        QFETCH(QString, kind);
        QFETCH(QStringList, story);
        const QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("book"));
        const auto memory = std::make_shared<MemoryStore::Book>();
        const auto open = [&]() -> std::unique_ptr<AddressBookStore> {
            if (kind == QStringLiteral("memory"))
                return std::make_unique<MemoryStore>(memory);
            return std::move(*SqliteStore::open(file));
        };
        const auto beside = [&](const QString &name, const QString &rest) -> std::optional<QStringList> {
            if (name == QStringLiteral("sql"))
                return askSql(file, rest.toUtf8().constData());
            if (name != QStringLiteral("salvage"))
                return std::nullopt;
            const auto saved = salvagePeople(file);
            const QString missing = QStringLiteral("%1 incomplete, %2 lost");
            return textsOf(saved->people) + QStringList(missing.arg(saved->incomplete).arg(saved->lost));
        };
        playStory(story, open, beside, file);
    }
};

QTEST_GUILESS_MAIN(SharedBookTest)
#include "SharedBookTest.moc"
