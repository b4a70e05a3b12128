// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/EveryStore.h"
#include "support/TestPeople.h"

#include <atomic>

/// What every store promises, seen on each of them.
class StoreContractTest : public QObject
{
    Q_OBJECT

private:
    EveryStore m_stores;

    static bool isSame(const PersonRecord &a, const PersonRecord &b, const QString &kind)
    {
        return EveryStore::keepsCards(kind) ? a.hasSameValues(b) : a == b;
    }

    static PersonRecordPtr record(const char *json) { return recordFromText(json).record; }

    static QString contentOf(AddressBookStore &store)
    {
        const auto people = store.loadAll();
        QString text;
        for (const auto &[uid, stored] : *people) {
            const QString *name = stored->text(kABFirstNameProperty);
            text += uid + u'=' + (name ? *name : QStringLiteral("-")) + u' ';
        }
        return text.trimmed();
    }

    static QString u(const char *text) { return QString::fromLatin1(text); }

    EveryStore::Opener openerOf(const QString &kind) { return m_stores.openerOf(kind); }

private Q_SLOTS:
    void recordsComeBackAsTheyWere_data() { EveryStore::addRows(); }
    void recordsComeBackAsTheyWere()
    {
        QFETCH(QString, kind);
        if (const QString problem = m_stores.problemOf(kind); !problem.isEmpty())
            QSKIP(qPrintable(problem));
        const auto open = openerOf(kind);
        std::vector<PersonRecordPtr> records{
            record("{}"),
            record("{'firstName':'','note':' ','birthday':'0001-01-01','flags':0,'email':[],'address':[]}"),
            record("{'firstName':'\\u0000a\\r\\n\\u001f','lastName':'😀','flags':-9223372036854775808}"),
            record("{'email':[{'value':''},{'label':'','value':'x'},{'label':'_$!<Home>!$_','value':'x'}]}"),
            record("{'address':[{'value':{}},{'label':'b','value':{'street':'','countryCode':'de'}}],'image':'AAE='}"),
            record("{'socialProfile':[{'value':{'service':'Twitter'}}],'instantMessage':[{'value':{'username':''}}]}"),
        };
        auto withLines = std::make_shared<PersonRecord>(*record("{'birthday':'9999-12-31'}"));
        withLines->setKeptLines({{u("GENDER:M"), QString()}, {u("TEL;PREF=1:1"), u("")}, {u("X:1"), u("Y:1")}});
        records.push_back(withLines);

        std::vector<RecordChange> additions;
        for (std::size_t i = 0; i < records.size(); ++i)
            additions.push_back({QString::number(9 - qsizetype(i)), nullptr, records[i]});
        QVERIFY(open()->commit(additions));
        auto people = open()->loadAll();
        QVERIFY(people);
        QCOMPARE(people->size(), records.size());
        if (EveryStore::keepsCards(kind))
            std::ranges::sort(*people, std::greater(), &StoredRecord::uid);
        for (std::size_t i = 0; i < records.size(); ++i) {
            QCOMPARE((*people)[i].uid, additions[i].uid);
            QVERIFY2(isSame(*(*people)[i].record, *records[i], kind), qPrintable(additions[i].uid));
        }
    }

    void changesReplaceExactlyWhatTheyName_data() { EveryStore::addRows(); }
    void changesReplaceExactlyWhatTheyName()
    {
        QFETCH(QString, kind);
        if (const QString problem = m_stores.problemOf(kind); !problem.isEmpty())
            QSKIP(qPrintable(problem));
        const auto open = openerOf(kind);
        const auto a = record("{'firstName':'A','email':[{'value':'1'},{'value':'2'}],'phone':[],'image':'AAE='}");
        const auto a2 = record("{'firstName':'A2','email':[],'phone':[{'value':'3'}],'urls':[{'value':'4'}]}");
        const auto b = record("{'firstName':'B','email':[{'value':'1'}]}");
        const auto store = open();
        QVERIFY(store->commit({{u("a"), nullptr, a}, {u("b"), nullptr, b}}));
        QVERIFY(store->commit({{u("a"), a, a2}, {u("c"), nullptr, b}}));
        QVERIFY(*(*store->loadAll())[0].record == *a2);
        QVERIFY(store->commit({{u("a"), a2, a}, {u("b"), b, nullptr}}));
        const auto people = open()->loadAll();
        QCOMPARE(people->size(), std::size_t(2));
        QVERIFY(*(*people)[0].record == *a);
        QCOMPARE((*people)[1].uid, u("c"));
    }

    void commitsAreWholeOrNotAtAll_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<int>("fault");
        for (const char *kind : EveryStore::kKinds) {
            for (int fault = 0; fault < 4; ++fault)
                QTest::addRow("%s %d", kind, fault) << u(kind) << fault;
        }
    }
    void commitsAreWholeOrNotAtAll()
    {
        QFETCH(QString, kind);
        if (const QString problem = m_stores.problemOf(kind); !problem.isEmpty())
            QSKIP(qPrintable(problem));
        QFETCH(int, fault);
        const auto open = openerOf(kind);
        const auto store = open();
        const auto a = record("{'firstName':'A'}");
        const auto b = record("{'firstName':'B'}");
        QVERIFY(store->commit({{u("a"), nullptr, a}}));
        const auto faults =
            std::to_array<RecordChange>({{u("a"), nullptr, b}, {u("a"), b, a}, {u("x"), a, b}, {u("x"), a, nullptr}});
        const auto committed = store->commit({{u("b"), nullptr, b}, faults.at(std::size_t(fault))});
        QVERIFY(!committed);
        QCOMPARE(committed.error().kind, ErrorKind::Conflict);
        QVERIFY(committed.error().text.startsWith(faults.at(std::size_t(fault)).uid));
        QCOMPARE(contentOf(*store), u("a=A"));
        QVERIFY(store->commit({{u("b"), nullptr, b}}));
        QCOMPARE(contentOf(*open()), u("a=A b=B"));
    }

    void othersAreHeardOf_data() { EveryStore::addRows(); }
    void othersAreHeardOf()
    {
        QFETCH(QString, kind);
        if (const QString problem = m_stores.problemOf(kind); !problem.isEmpty())
            QSKIP(qPrintable(problem));
        const auto open = openerOf(kind);
        const auto mine = open();
        const auto theirs = open();
        const auto a = record("{'firstName':'A'}");
        const auto a2 = record("{'firstName':'A2'}");
        QVERIFY(mine->commit({{u("a"), nullptr, a}, {u("b"), nullptr, a}}));
        QCOMPARE(contentOf(*mine), u("a=A b=A"));
        QCOMPARE(contentOf(*theirs), u("a=A b=A"));
        QVERIFY(mine->takeChangesFromOutside()->empty());
        QVERIFY(theirs->commit({{u("a"), a, a2}, {u("b"), a, nullptr}, {u("c"), nullptr, a}}));

        const auto conflict = mine->commit({{u("a"), a, nullptr}});
        QVERIFY(!conflict);
        QCOMPARE(conflict.error().kind, ErrorKind::Conflict);
        // A commit of one's own in between must not hide what the others did before it.
        QVERIFY(mine->commit({{u("d"), nullptr, a}}));

        auto changes = *mine->takeChangesFromOutside();
        std::erase_if(changes, [](const OutsideChange &change) { return change.uid == u("d"); });
        std::ranges::sort(changes, {}, &OutsideChange::uid);
        QCOMPARE(changes.size(), std::size_t(3));
        QVERIFY(changes[0].uid == u("a") && *changes[0].now == *a2);
        QVERIFY(changes[1].uid == u("b") && !changes[1].now);
        QVERIFY(changes[2].uid == u("c") && *changes[2].now == *a);
        QVERIFY(mine->takeChangesFromOutside()->empty());

        // Removed and added again: there, not gone.
        QVERIFY(theirs->commit({{u("c"), a, nullptr}}));
        QVERIFY(theirs->commit({{u("c"), nullptr, a2}}));
        changes = *mine->takeChangesFromOutside();
        QCOMPARE(changes.size(), std::size_t(1));
        QVERIFY(changes[0].now && *changes[0].now == *a2);
    }

    void othersAreTold_data()
    {
        QTest::addColumn<QString>("kind");
        for (const char *kind : {"sqlite", "eds"}) // the others cannot tell
            QTest::newRow(kind) << u(kind);
    }
    void othersAreTold()
    {
        QFETCH(QString, kind);
        if (const QString problem = m_stores.problemOf(kind); !problem.isEmpty())
            QSKIP(qPrintable(problem));
        const auto open = openerOf(kind);
        const auto mine = open();
        const auto theirs = open();
        QVERIFY(mine->loadAll());
        std::atomic<int> calls = 0;
        mine->setChangeListener([&calls] { ++calls; });
        QVERIFY(theirs->commit({{u("a"), nullptr, record("{'firstName':'A'}")}}));
        QTRY_VERIFY(calls > 0);
        QCOMPARE(mine->takeChangesFromOutside()->size(), std::size_t(1));
        mine->setChangeListener({});
    }
};

QTEST_GUILESS_MAIN(StoreContractTest)
#include "StoreContractTest.moc"
