// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/FailingStore.h"
#include "support/MemoryStore.h"
#include "support/TestPeople.h"

#include <QTest>

#include <atomic>
#include <thread>

/// Cannot change the person with the uid "bad".
class RefusingStore : public MemoryStore
{
public:
    using MemoryStore::MemoryStore;

    Result<void> commit(const std::vector<RecordChange> &changes) override
    {
        const QString bad = QStringLiteral("bad");
        if (std::ranges::find(changes, bad, &RecordChange::uid) != changes.end())
            return Error{ErrorKind::Invalid, QStringLiteral("bad: is damaged"), {bad}};
        return MemoryStore::commit(changes);
    }
};

/// The address book: what is pending, what a save writes, and what happens when others write too.
class AddressBookTest : public QObject
{
    Q_OBJECT

private:
    using BookPtr = std::shared_ptr<ABAddressBook>;

    static QString u(const char *text) { return QString::fromLatin1(text); }

    static BookPtr openBook(const std::shared_ptr<MemoryStore::Book> &book)
    {
        return *ABAddressBook::open(std::make_unique<MemoryStore>(book));
    }

    static ABPersonPtr person(const char *json)
    {
        const auto stored = recordFromText(json);
        return std::make_shared<ABPerson>(stored.uid, stored.record);
    }

    static void setName(const BookPtr &book, const char *uid, const char *name)
    {
        QVERIFY(book->personWithUniqueId(u(uid))->setValue(u(name), kABFirstNameProperty));
    }

private Q_SLOTS:
    void addingTwiceKeepsOneCopy()
    {
        const auto book = sharedBookOf({"{'uid':'a'}"});
        const auto a = book->people().first();
        QVERIFY(book->addRecord(a));
        QVERIFY(a->setValue(u("A"), kABFirstNameProperty));
        QVERIFY(book->addRecord(a));
        QVERIFY(book->save());
        QCOMPARE(book->people().size(), 1);
        Error error;
        QVERIFY(!book->addRecord(person("{'uid':'a'}"), &error));
        QCOMPARE(error.kind, ErrorKind::Conflict);
        QVERIFY(!sharedBookOf({"{'uid':'b'}"})->addRecord(a, &error));
        QCOMPARE(error.kind, ErrorKind::Conflict);
    }

    void onlyWhatIsPendingIsSaved()
    {
        const auto backing = std::make_shared<MemoryStore::Book>();
        auto failing = std::make_unique<FailingStore>(std::make_unique<MemoryStore>(backing), 0);
        const FailingStore &store = *failing;
        const auto book = *ABAddressBook::open(std::move(failing));
        book->addRecord(person("{'uid':'a','firstName':'A'}"));
        book->addRecord(person("{'uid':'b','firstName':'B'}"));
        QVERIFY(book->hasUnsavedChanges());
        QVERIFY(book->save());
        QVERIFY(!book->hasUnsavedChanges());

        const int calls = store.callCount();
        setName(book, "a", "A"); // as it was
        setName(book, "b", "C");
        setName(book, "b", "B"); // and back
        QVERIFY(book->save());
        QCOMPARE(store.callCount(), calls);

        const auto brief = person("{'uid':'c'}");
        QVERIFY(book->addRecord(brief));
        QVERIFY(book->removeRecord(brief));
        QVERIFY(book->save());
        QCOMPARE(store.callCount(), calls);
    }

    void aFailedSaveLeavesEverythingPending()
    {
        const auto backing = std::make_shared<MemoryStore::Book>();
        auto failing = std::make_unique<FailingStore>(std::make_unique<MemoryStore>(backing), 0);
        FailingStore &store = *failing;
        const auto book = *ABAddressBook::open(std::move(failing));
        book->addRecord(person("{'uid':'a','firstName':'A'}"));
        book->addRecord(person("{'uid':'b'}"));
        QVERIFY(book->save());
        setName(book, "a", "A2");
        book->removeRecord(book->personWithUniqueId(u("b")));
        book->addRecord(person("{'uid':'c'}"));
        const QByteArray pending = textOf(*book);
        store.failAtCall(store.callCount() + 1);
        Error error;
        QVERIFY(!book->save(&error));
        QCOMPARE(error.text, u("no space left on the device"));
        QCOMPARE(textOf(*book), pending);
        QCOMPARE(textOf(*openBook(backing)), QByteArray("{\"uid\":\"a\",\"firstName\":\"A\"}\n{\"uid\":\"b\"}\n"));
        QVERIFY(book->save());
        QCOMPARE(textOf(*openBook(backing)), pending);
    }

    void whatTheStoreCannotChangeIsTakenBack()
    {
        const auto backing = std::make_shared<MemoryStore::Book>();
        const auto before = openBook(backing);
        for (const char *json : {"{'uid':'a'}", "{'uid':'bad','firstName':'B'}", "{'uid':'c'}"})
            before->addRecord(person(json));
        QVERIFY(before->save());
        auto failing = std::make_unique<FailingStore>(std::make_unique<RefusingStore>(backing), 0);
        FailingStore &store = *failing;
        const auto book = *ABAddressBook::open(std::move(failing));
        setName(book, "a", "A");
        store.failAtCall(store.callCount() + 1);
        QVERIFY(!book->save(nullptr, makeCause(ChangeCause::Kind::Edit)));

        // A merge of the other two, of which one is refused.
        setName(book, "bad", "B2");
        book->removeRecord(book->personWithUniqueId(u("bad")));
        book->removeRecord(book->personWithUniqueId(u("c")));
        book->addRecord(person("{'uid':'merged'}"));
        Error error;
        QVERIFY(!book->save(&error, makeCause(ChangeCause::Kind::Repair)));
        QCOMPARE(error.text, u("bad: is damaged; the change was taken back"));
        QVERIFY(!book->hasUnsavedChanges());
        QCOMPARE(textOf(*book),
            QByteArray(
                "{\"uid\":\"a\",\"firstName\":\"A\"}\n{\"uid\":\"bad\",\"firstName\":\"B\"}\n{\"uid\":\"c\"}\n"));
        QCOMPARE(textOf(*openBook(backing)), textOf(*book));
    }

    void aRemovedPersonCanComeBackAndItsUidIsNotFreeBefore()
    {
        const auto book = sharedBookOf({"{'uid':'a'}", "{'uid':'b'}"});
        const auto a = book->personWithUniqueId(u("a"));
        QVERIFY(book->removeRecord(a));
        QVERIFY(!book->removeRecord(a));
        QVERIFY(!book->addRecord(person("{'uid':'a'}")));
        QVERIFY(book->addRecord(a));
        QCOMPARE(uidsOf(book->people()), QStringList({u("a"), u("b")})); // as the store has them
        QVERIFY(!book->personWithUniqueId(u("x")));
        QCOMPARE(book->personWithUniqueId(u("a")), a);
        QVERIFY(book->removeRecord(a));
        QVERIFY(book->save());
        QVERIFY(book->addRecord(person("{'uid':'a'}")));
        QVERIFY(book->save());
        QCOMPARE(uidsOf(book->people()), QStringList({u("b"), u("a")}));
    }

    void savesMergeWithWhatOthersChanged()
    {
        const auto backing = std::make_shared<MemoryStore::Book>();
        const auto mine = openBook(backing);
        for (const char *json : {"{'uid':'a','firstName':'A','note':'n'}", "{'uid':'b'}", "{'uid':'c'}"})
            mine->addRecord(person(json));
        QVERIFY(mine->save());
        const auto theirs = openBook(backing);
        const auto a = mine->personWithUniqueId(u("a"));
        QVERIFY(theirs->personWithUniqueId(u("a"))->setValue(u("theirs"), kABNoteProperty));
        theirs->removeRecord(theirs->personWithUniqueId(u("b")));
        theirs->addRecord(person("{'uid':'d'}"));
        QVERIFY(theirs->save());

        setName(mine, "a", "mine");
        QVERIFY(mine->save());
        QCOMPARE(mine->personWithUniqueId(u("a")), a);
        const QByteArray merged =
            "{\"uid\":\"a\",\"firstName\":\"mine\",\"note\":\"theirs\"}\n{\"uid\":\"c\"}\n{\"uid\":\"d\"}\n";
        QCOMPARE(textOf(*mine), merged);
        QCOMPARE(textOf(*openBook(backing)), merged);
        QCOMPARE(theirs->refresh()->size(), std::size_t(1));
        QCOMPARE(textOf(*theirs), merged);
    }

    void aValueOfOthersIsNotOverruled()
    {
        const auto backing = std::make_shared<MemoryStore::Book>();
        const auto mine = openBook(backing);
        mine->addRecord(person("{'uid':'a','firstName':'A'}"));
        QVERIFY(mine->save());
        const auto theirs = openBook(backing);
        for (const bool isRefreshedBefore : {false, true}) {
            setName(theirs, "a", isRefreshedBefore ? "T2" : "T1");
            QVERIFY(theirs->save());
            setName(mine, "a", "mine");
            QVERIFY(mine->personWithUniqueId(u("a"))->setValue(u("mine"), kABNoteProperty));
            if (isRefreshedBefore)
                QVERIFY(mine->catchUp());
            Error error;
            QVERIFY(!mine->save(&error));
            QCOMPARE(error.kind, ErrorKind::Conflict);
            QVERIFY(error.text.startsWith(u("a:")));
            QVERIFY(!mine->hasUnsavedChanges() && mine->save());
            QCOMPARE(textOf(*mine), textOf(*theirs));
            QCOMPARE(textOf(*mine), textOf(*openBook(backing)));
            // Those who watch are told once, whatever took it in.
            QCOMPARE(*mine->refresh(), std::vector<QString>{u("a")});
            QVERIFY(mine->refresh()->empty());
        }
        // The same value is no clash.
        setName(theirs, "a", "same");
        setName(mine, "a", "same");
        QVERIFY(theirs->save() && mine->save());
    }

    void whatOthersRemovedOrChangedIsNotOverruled_data()
    {
        QTest::addColumn<bool>("iRemove");
        QTest::newRow("mine changed, theirs removed") << false;
        QTest::newRow("mine removed, theirs changed") << true;
    }
    void whatOthersRemovedOrChangedIsNotOverruled()
    {
        QFETCH(bool, iRemove);
        const auto backing = std::make_shared<MemoryStore::Book>();
        const auto mine = openBook(backing);
        mine->addRecord(person("{'uid':'a','firstName':'A'}"));
        mine->addRecord(person("{'uid':'b'}"));
        QVERIFY(mine->save());
        const auto theirs = openBook(backing);
        const auto &remover = iRemove ? mine : theirs;
        const auto &editor = iRemove ? theirs : mine;
        remover->removeRecord(remover->personWithUniqueId(u("a")));
        setName(editor, "a", "A2");
        setName(mine, "b", "B2");
        QVERIFY(theirs->save());
        Error error;
        QVERIFY(!mine->save(&error));
        QCOMPARE(error.kind, ErrorKind::Conflict);
        QVERIFY(error.text.startsWith(u("a:")));
        QCOMPARE(mine->personWithUniqueId(u("a")) != nullptr, iRemove);
        QVERIFY(mine->save());
        QVERIFY(!mine->hasUnsavedChanges());
        const auto stored = openBook(backing);
        QCOMPARE(stored->personWithUniqueId(u("a")) != nullptr, iRemove);
        QVERIFY(stored->personWithUniqueId(u("b"))->valueForKey(u"firstName") == ABValue(u("B2")));
    }

    void readersOnOtherThreadsSeeWholeRecords()
    {
        const auto book = sharedBookOf({"{'uid':'a','firstName':'0','lastName':'0'}", "{'uid':'b'}"});
        const auto a = book->personWithUniqueId(u("a"));
        std::atomic<bool> done = false;
        std::atomic<int> torn = 0;
        std::atomic<int> reads = 0;
        std::vector<std::thread> readers;
        for (int i = 0; i < 2; ++i) {
            readers.emplace_back([&] {
                do {
                    const PeopleSnapshot everybody = book->snapshot();
                    for (const auto &[person, record] : *everybody) {
                        if (person == a && *record->text(kABFirstNameProperty) != *record->text(kABLastNameProperty))
                            ++torn;
                    }
                    book->personWithUniqueId(u("b"));
                    ++reads;
                } while (!done);
            });
        }
        for (int i = 1; i < 300; ++i) {
            auto next = std::make_shared<PersonRecord>();
            next->setText(kABFirstNameProperty, QString::number(i));
            next->setText(kABLastNameProperty, QString::number(i));
            a->replaceRecord(next);
            const auto guest = std::make_shared<ABPerson>();
            book->addRecord(guest);
            QVERIFY(book->save());
            book->removeRecord(guest);
            QVERIFY(book->refresh());
        }
        done = true;
        for (auto &reader : readers)
            reader.join();
        QCOMPARE(torn, 0);
        QVERIFY(reads > 0);
    }
};

QTEST_APPLESS_MAIN(AddressBookTest)
#include "AddressBookTest.moc"
