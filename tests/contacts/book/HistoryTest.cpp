// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/RestorePlan.h"
#include "support/EveryStore.h"
#include "support/TestPeople.h"

using Kind = ChangeCause::Kind;

/// The history and what restores do with it, on every kind of store.
class HistoryTest : public QObject
{
    Q_OBJECT

private:
    EveryStore m_stores;
    QDateTime m_now = currentTime();

    EveryStore::Opener openerOf(const QString &kind)
    {
        return m_stores.openerOf(kind, [this] { return m_now; });
    }

    static std::shared_ptr<ABAddressBook> bookOf(std::unique_ptr<AddressBookStore> store)
    {
        return *ABAddressBook::open(std::move(store));
    }

    static QString u(const char *text) { return QString::fromLatin1(text); }

    static PersonRecordPtr record(const char *json) { return recordFromText(json).record; }

    static PersonRecordPtr withLine(const char *json, const char *line)
    {
        auto record = std::make_shared<PersonRecord>(*recordFromText(json).record);
        record->setKeptLines({{u(line), QString()}});
        return record;
    }

    static void addPeople(ABAddressBook &book, const std::vector<StoredRecord> &people)
    {
        for (const auto &[uid, each] : people)
            QVERIFY(book.addRecord(std::make_shared<ABPerson>(uid, each)));
        QVERIFY(book.save(nullptr, makeCause(Kind::Import, u("people.vcf"))));
    }

    static void setName(ABAddressBook &book, const QString &uid, const QString &name)
    {
        QVERIFY(book.personWithUniqueId(uid)->setValue(name, kABFirstNameProperty));
        QVERIFY(book.save(nullptr, makeCause(Kind::Edit, u("First Name"))));
    }

    /// What a merge does: a save for each removal, one for the addition.
    static void merge(ABAddressBook &book, const QStringList &uids, const StoredRecord &merged)
    {
        const auto cause = makeCause(Kind::Repair, u("Duplicate contacts: Merge contacts"));
        for (const QString &uid : uids) {
            QVERIFY(book.removeRecord(book.personWithUniqueId(uid)));
            QVERIFY(book.save(nullptr, cause));
        }
        QVERIFY(book.addRecord(std::make_shared<ABPerson>(merged.uid, merged.record)));
        QVERIFY(book.save(nullptr, cause));
    }

    /// A step a line, newest first: what it was and what it did.
    static QString linesOf(ABAddressBook &book)
    {
        const auto history = book.history();
        if (!history)
            return history.error().text;
        QStringList lines;
        for (const ChangeSummary &step : *history)
            lines += u("%1 +%2 ~%3 -%4").arg(textOf(step.cause)).arg(step.added).arg(step.changed).arg(step.removed);
        return lines.join(u'\n');
    }

    static QString idOf(ABAddressBook &book, std::size_t place) { return (*book.history())[place].cause.id; }

    /// Uid and first name of everybody, sorted, as stores order them differently.
    static QString peopleIn(ABAddressBook &book)
    {
        QStringList texts;
        for (const auto &[person, now] : *book.snapshot()) {
            const QString *name = now->text(kABFirstNameProperty);
            texts += person->uniqueId() + u'=' + (name ? *name : u("-"));
        }
        texts.sort();
        return texts.join(u' ');
    }

    static Result<void> restore(ABAddressBook &book, const QStringList &ids)
    {
        const auto plan = planRestore(book, ids);
        return plan ? ::restore(book, *plan) : plan.error();
    }

private Q_SLOTS:
    void aMergeIsOneStepAndRestoredAsOne_data() { EveryStore::addRows(); }
    void aMergeIsOneStepAndRestoredAsOne()
    {
        QFETCH(QString, kind);
        if (const QString problem = m_stores.problemOf(kind); !problem.isEmpty())
            QSKIP(qPrintable(problem));
        const auto open = openerOf(kind);
        const std::vector<StoredRecord> people{
            {u("a"), withLine("{'firstName':'A','note':'','image':'AAE='}", "X-SHOE-SIZE:42")},
            {u("b"), withLine("{'firstName':'B','email':[{'label':'own','value':'x'}]}", "KIND:individual")},
            {u("c"), record("{'firstName':'C'}")}};
        {
            const auto book = bookOf(open());
            addPeople(*book, people);
            setName(*book, u("c"), u("C2"));
            merge(*book, {u("a"), u("b"), u("c")}, {u("m"), record("{'firstName':'M'}")});
        }
        const auto book = bookOf(open()); // after a restart
        QCOMPARE(linesOf(*book),
            u("repair: Duplicate contacts: Merge contacts +1 ~0 -3\nedit: First Name +0 ~1 -0\n"
              "import: people.vcf +3 ~0 -0"));
        const auto edit = book->historyStep(idOf(*book, 1));
        QCOMPARE(edit->changes.size(), std::size_t(1));
        QCOMPARE(*edit->changes[0].before->text(kABFirstNameProperty), u("C"));
        QCOMPARE(*edit->changes[0].after->text(kABFirstNameProperty), u("C2"));
        const auto repair = book->historyStep(idOf(*book, 0));
        QCOMPARE(repair->changes.size(), std::size_t(4));
        QVERIFY(!repair->changes[0].after && !repair->changes[0].afterIsLost);
        QVERIFY(!repair->changes[3].before);
        QCOMPARE(*repair->changes[3].after->text(kABFirstNameProperty), u("M"));
        QCOMPARE(book->historyStep(u("unknown")).error().kind, ErrorKind::NotFound);

        const auto restored = restore(*book, {idOf(*book, 0)});
        QVERIFY2(restored, qPrintable(restored ? QString() : restored.error().text));
        for (const auto &each : {bookOf(open()), book}) {
            QCOMPARE(peopleIn(*each), u("a=A b=B c=C2"));
            for (const StoredRecord &person : {people[0], people[1]}) {
                const auto now = each->personWithUniqueId(person.uid)->record();
                QVERIFY(now->hasSameValues(*person.record));
                QVERIFY(std::ranges::count(now->keptLines(), person.record->keptLines().front()) == 1);
            }
        }
        QVERIFY(!book->hasUnsavedChanges());
        QCOMPARE(
            linesOf(*book).section(u'\n', 0, 0), u("restore: repair: Duplicate contacts: Merge contacts +3 ~0 -1"));
        // A restore is a change like any other.
        QVERIFY(restore(*book, {idOf(*book, 0)}));
        QCOMPARE(peopleIn(*bookOf(open())), u("m=M"));
    }

    void whoeverChangedSinceIsLeftAlone_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("deed");
        QTest::addColumn<QString>("reason");
        for (const char *kind : EveryStore::kKinds) {
            QTest::addRow("%s changed", kind) << u(kind) << u("change") << u("a (A3): was changed since");
            QTest::addRow("%s removed", kind) << u(kind) << u("remove") << u("a (A2): was removed since");
            QTest::addRow("%s own", kind) << u(kind) << u("own") << u("a (A3): was changed since");
            QTest::addRow("%s unsaved", kind) << u(kind) << u("unsaved") << u("a (A3): was changed since");
        }
    }
    void whoeverChangedSinceIsLeftAlone()
    {
        QFETCH(QString, kind);
        if (const QString problem = m_stores.problemOf(kind); !problem.isEmpty())
            QSKIP(qPrintable(problem));
        QFETCH(QString, deed);
        QFETCH(QString, reason);
        const auto open = openerOf(kind);
        const auto book = bookOf(open());
        addPeople(*book, {{u("a"), record("{'firstName':'A'}")}, {u("b"), record("{'firstName':'B'}")}});
        book->personWithUniqueId(u("a"))->setValue(u("A2"), kABFirstNameProperty);
        book->personWithUniqueId(u("b"))->setValue(u("B2"), kABFirstNameProperty);
        QVERIFY(book->save(nullptr, makeCause(Kind::Repair, u("both"))));
        const QString id = idOf(*book, 0);
        const auto other = deed == u("own") || deed == u("unsaved") ? book : bookOf(open());
        if (deed == u("remove"))
            QVERIFY(other->removeRecord(other->personWithUniqueId(u("a"))));
        else
            QVERIFY(other->personWithUniqueId(u("a"))->setValue(u("A3"), kABFirstNameProperty));
        if (deed != u("unsaved"))
            QVERIFY(other->save());
        const QString before = peopleIn(*other);
        const QString linesBefore = linesOf(*other);
        const auto restored = restore(*book, {id});
        QVERIFY(!restored);
        QCOMPARE(restored.error().kind, ErrorKind::Conflict);
        QCOMPARE(restored.error().text, reason + u("; nothing was restored"));
        QCOMPARE(peopleIn(*book), before);
        QCOMPARE(linesOf(*book), linesBefore);
        if (deed == u("own")) { // taken back together with what came later it can be done
            QVERIFY(restore(*book, {id, idOf(*book, 0), id}));
            QCOMPARE(peopleIn(*bookOf(open())), u("a=A b=B"));
            QCOMPARE(linesOf(*book).section(u'\n', 0, 0), u("restore: 2 changes +0 ~2 -0"));
        }
    }

    void aFailureChangesNothing()
    {
        const auto shared = std::make_shared<MemoryStore::Book>();
        auto failing = std::make_unique<FailingStore>(std::make_unique<MemoryStore>(shared), 0);
        FailingStore &store = *failing;
        const auto book = bookOf(std::move(failing));
        addPeople(*book, {{u("a"), record("{'firstName':'A'}")}, {u("b"), record("{'firstName':'B'}")}});
        merge(*book, {u("a"), u("b")}, {u("m"), record("{'firstName':'M'}")});
        const auto plan = planRestore(*book, {idOf(*book, 0)});
        QVERIFY(plan);
        store.failAtCall(store.callCount() + 1);
        QVERIFY(!::restore(*book, *plan));
        QCOMPARE(peopleIn(*book), u("m=M"));
        QVERIFY(!book->hasUnsavedChanges());
        QVERIFY(::restore(*book, *plan));
        QCOMPARE(peopleIn(*bookOf(std::make_unique<MemoryStore>(shared))), u("a=A b=B"));
    }

    /// What a failed save left pending is written by a later one, and still belongs to what caused it.
    void pendingChangesKeepTheirCause()
    {
        auto failing = std::make_unique<FailingStore>(std::make_unique<MemoryStore>(), 0);
        FailingStore &store = *failing;
        const auto book = bookOf(std::move(failing));
        addPeople(*book, {{u("a"), record("{'firstName':'A'}")}, {u("b"), record("{'firstName':'B'}")}});
        store.failAtCall(store.callCount() + 1);
        QVERIFY(book->removeRecord(book->personWithUniqueId(u("a"))));
        QVERIFY(!book->save(nullptr, makeCause(Kind::Deletion, u("A"))));
        setName(*book, u("b"), u("B2"));
        QStringList lines = linesOf(*book).split(u'\n').mid(0, 2);
        lines.sort();
        QCOMPARE(lines, (QStringList{u("deletion: A +0 ~0 -1"), u("edit: First Name +0 ~1 -0")}));
    }

    void oldStepsAreForgotten_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<int>("pause"); // days before each later step
        QTest::addColumn<int>("later");
        QTest::addColumn<int>("steps"); // that are old
        QTest::addColumn<int>("left");
        for (const char *kind : {"memory", "sqlite"}) {
            QTest::addRow("%s young", kind) << u(kind) << 1 << 89 << 1100 << 1189;
            QTest::addRow("%s few", kind) << u(kind) << 1 << 400 << 90 << 490;
            QTest::addRow("%s old and many", kind) << u(kind) << 1 << 91 << 1100 << 1000;
            QTest::addRow("%s with a wrong clock", kind) << u(kind) << 27'000 << 2 << 1100 << 1102;
        }
    }
    void oldStepsAreForgotten()
    {
        QFETCH(QString, kind);
        QFETCH(int, pause);
        QFETCH(int, later);
        QFETCH(int, steps);
        QFETCH(int, left);
        m_now = QDateTime(QDate(2026, 1, 1), QTime(12, 0), Qt::UTC);
        const auto open = openerOf(kind);
        {
            const auto store = open();
            PersonRecordPtr before;
            for (int i = 0; i < steps + later - 1; ++i) {
                m_now = m_now.addDays(i < steps ? 0 : pause);
                auto after = std::make_shared<PersonRecord>();
                after->setText(kABFirstNameProperty, QString::number(i));
                QVERIFY(store->commit({{u("a"), before, after}}));
                before = after;
            }
            QVERIFY(store->history()->size() >= std::size_t(steps));
        }
        m_now = m_now.addDays(pause);
        const auto book = bookOf(open());
        setName(*book, u("a"), u("new"));
        QCOMPARE(int(book->history()->size()), left);
        QVERIFY(restore(*book, {idOf(*book, 0)}));
        QCOMPARE(peopleIn(*book), u("a=%1").arg(steps + later - 2));
    }
};

QTEST_GUILESS_MAIN(HistoryTest)
#include "HistoryTest.moc"
