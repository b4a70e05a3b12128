// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/SqliteStore.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

/// This program is a later version of ours: built of the same sources, but for a table of properties that has one text,
/// one list and one part of an address more (tests/CMakeLists.txt adds them). It and the present command line share
/// address books.
class LaterVersionTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    QString m_book = m_folder.filePath(QStringLiteral("book"));

    static QString u(const char *text) { return QString::fromUtf8(text); }

    struct Outcome
    {
        int status = -1;
        QString out;
        QString err;
    };
    Outcome present(const QStringList &arguments) const
    {
        QProcess program;
        program.start(QCoreApplication::applicationDirPath() + u("/../bin/peoplenook-cli"),
            QStringList({u("--address-book"), m_book}) + arguments);
        program.waitForFinished();
        return {program.exitCode(), u(program.readAllStandardOutput()), u(program.readAllStandardError())};
    }

private Q_SLOTS:
    void filesOfBothServeBoth()
    {
        QFile file(m_folder.filePath(u("people.jsonl")));
        const QByteArray ann = R"({"uid":"a","firstName":"Ann","phone":[],"address":[{"value":{"city":"Ulm"}}]})";
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(ann + "\n{\"uid\":\"b\",\"note\":\"n\"}\n") > 0);
        file.close();
        QCOMPARE(present({u("import"), file.fileName()}).status, 0);
        QCOMPARE(present({u("edit"), u("a"), u("Nickname"), u("A")}).status, 0);

        // What the present version wrote is read, and its history's hashes are proven.
        auto store = std::move(*SqliteStore::open(m_book));
        const auto people = store->loadAll();
        QVERIFY2(people, people ? "" : qPrintable(people.error().text));
        const auto history = store->history();
        QCOMPARE(history->size(), std::size_t(2));
        for (const ChangeSummary &summary : *history) {
            const auto step = store->historyStep(summary.cause.id);
            for (const RecordedChange &change : step->changes)
                QVERIFY(change.after && !change.afterIsLost);
        }

        // The new properties are kept and come back.
        PersonRecord changed = *people->front().record;
        changed.setText(kABPronounsProperty, u("she"));
        changed.setMultiValue(
            kABDatesProperty, ABMultiValue(QList<ABMultiValue::Entry>{{u("Wedding"), u("2001-02-03")}}));
        const ABDictionary address{{kABAddressCityKey, u("Ulm")}, {kABAddressDistrictKey, u("Söflingen")}};
        changed.setMultiValue(kABAddressProperty, ABMultiValue(QList<ABMultiValue::Entry>{{QString(), address}}));
        QVERIFY(store->commit({{u("a"), people->front().record, std::make_shared<const PersonRecord>(changed)}}));
        store.reset();
        QVERIFY(*(*SqliteStore::open(m_book))->loadAll()->front().record == changed);

        // The present version shows what it knows, changes others, and refuses what would lose something.
        QCOMPARE(present({u("people")}).out.section(u'\n', 0, 0),
            u(ann).replace(u("\"Ann\","), u("\"Ann\",\"nickname\":\"A\",")));
        const Outcome refused = present({u("edit"), u("a"), u("Nickname"), u("B")});
        QCOMPARE(refused.status, 1);
        QVERIFY2(
            refused.err.contains(u("a newer version of this program wrote \"pronouns\"")), qPrintable(refused.err));
        QCOMPARE(present({u("edit"), u("b"), u("Nickname"), u("B")}).status, 0);
        QVERIFY(*(*SqliteStore::open(m_book))->loadAll()->front().record == changed);
    }
};

QTEST_GUILESS_MAIN(LaterVersionTest)
#include "LaterVersionTest.moc"
