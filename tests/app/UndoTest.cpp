// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/UndoSteps.h"
#include "contacts/book/RecordImporter.h"
#include "contacts/model/NameTexts.h"
#include "contacts/stores/sqlite/SqliteStore.h"
#include "fix/MergeContacts.h"
#include "results/FixAll.h"
#include "scan/ScanAddressBook.h"
#include "support/Answers.h"
#include "support/TestPeople.h"
#include "table/fields/FieldCommit.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;

namespace {

class Surroundings : public ResultsDelegate
{
public:
    AlertPanel &alertPanel() override { return m_answers; }
    void selectInAddressBook(const ABPersonPtr &) override { }
    void editInAddressBook(const ABPersonPtr &) override { }
    void reloadUI() override { }

private:
    Answers m_answers{true};
};

/// Changes an address book at random, in every way in which a window can.
class RandomChanges
{
public:
    RandomChanges(ABAddressBook &book, quint32 seed) : m_book(book), m_random(seed) { }

    QByteArray people(int count)
    {
        const QList<QByteArray> parts{"'firstName':'Ann'", "'firstName':'Bo B'", "'lastName':'Lee'", "'lastName':'Ito'",
            "'suffix':'x'", "'title':'y'", "'note':' '", "'note':'n'", "'nickname':' '", "'organization':'Acme'",
            "'email':[{'label':'_$!<Home>!$_','value':'a@b.c'},{'label':'own','value':'d@e.f'}]",
            "'email':[{'value':'a@b.c'},{'value':'a@b.c'}]", "'phone':[{'value':'1'},{'label':'own','value':'1'}]",
            "'phone':[{'value':'12#'}]", "'address':[{'value':{'city':'Bonn'}},{'value':{'city':'Bonn'}}]",
            "'image':'AAAA'"};
        QByteArray lines;
        for (int i = 0; i < count; ++i) {
            QMap<QByteArray, QByteArray> chosen; // one of each property
            for (int k = 0; k < 5; ++k) {
                const QByteArray &part = parts[below(parts.size())];
                chosen[part.left(part.indexOf(':'))] = part;
            }
            lines += "{'uid':'" + QByteArray::number(++m_lastUid) + "'," + chosen.values().join(',') + "}\n";
        }
        return lines.replace('\'', '"');
    }

    void import(int count)
    {
        QVERIFY(!importFile(m_book, recordSource(people(count), RecordFormat::JsonLines), u"people.jsonl"_s).error);
    }

    void change()
    {
        const auto person = [this] { return m_book.people()[below(m_book.people().size())]; };
        switch (m_book.people().size() < 5 ? 0 : below(8)) {
        case 0:
            import(6);
            break;
        case 1: {
            const auto fields = allFields();
            const auto value = below(4) == 0 ? FieldValue(QString()) : FieldValue(u"Ito %1"_s.arg(below(3)));
            const QString label = fields[std::size_t(below(qsizetype(fields.size())))].label;
            static_cast<void>(
                FieldCommit::commitContactsToAddressBook(label, value, person())); // a date may be refused
            break;
        }
        case 2: {
            person()->replaceRecord(recordFromText(people(1)).record);
            QVERIFY(m_book.save(nullptr, makeCause(ChangeCause::Kind::Card)));
            break;
        }
        case 3: {
            QVERIFY(m_book.removeRecord(person()));
            QVERIFY(m_book.save(nullptr, makeCause(ChangeCause::Kind::Deletion)));
            break;
        }
        case 4: {
            std::vector<StoredRecord> merged;
            for (const auto &each : m_book.people().mid(below(m_book.people().size() - 2), 3))
                merged.push_back({each->uniqueId(), each->record()});
            QVERIFY(mergeInto(m_book, merged, *merged.back().record));
            break;
        }
        default:
            repair(below(2) == 0);
        }
    }

private:
    void repair(bool all)
    {
        Surroundings surroundings;
        OutlineViewController controller(surroundings);
        controller.setOutlineViewDataSouce(ScanAddressBook::examine(conditionTitles()));
        if (controller.rootNodes().isEmpty())
            return;
        const PersonItemPtr group = controller.rootNodes()[below(controller.rootNodes().size())];
        const OptionGroup options = conditionGroup(group->finding().condition).optionGroup;
        const auto &titles = optionGroupInfo(options).titles;
        controller.chooseOption(options, titles[std::size_t(below(qsizetype(titles.size())))]);
        QList<PersonItemPtr> findings = group->childrenArray();
        FixAll repairs(controller, all ? findings : findings.mid(below(findings.size()), 1), surroundings.alertPanel());
        while (!repairs.isAtEnd())
            QVERIFY(!repairs.next().outcome.error);
    }

    qsizetype below(qsizetype end) { return qsizetype(m_random() % quint64(end)); }

    ABAddressBook &m_book;
    std::mt19937 m_random;
    int m_lastUid = 0;
};

} // namespace

/// Undo and redo of everything that changes the address book.
class UndoTest : public QObject
{
    Q_OBJECT

    static QByteArrayList peopleOf(const ABAddressBook &book)
    {
        QByteArrayList people = textOf(book).split('\n');
        std::ranges::sort(people); // those who were removed come back last
        return people;
    }
    static void verifyNames(ABAddressBook &book)
    {
        for (const auto &person : book.people()) {
            const QString name = nameKey(*person->record());
            QList<ABPersonPtr> namesakes = book.people();
            namesakes.removeIf([&](const ABPersonPtr &each) { return nameKey(*each->record()) != name; });
            QCOMPARE(book.peopleWithNameKey(name), namesakes);
        }
    }

private Q_SLOTS:
    void everythingUndoneIsAsBefore_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 20; ++seed)
            QTest::addRow("%u", seed) << seed;
    }

    void everythingUndoneIsAsBefore()
    {
        QFETCH(const quint32, seed);
        const QTemporaryDir folder;
        const auto book = *ABAddressBook::open(std::move(*SqliteStore::open(folder.filePath(u"book"_s))));
        ABAddressBook::setSharedAddressBook(book);
        RandomChanges changes(*book, seed);
        changes.import(12);
        UndoSteps undo;
        undo.watch(book);
        QList<QByteArrayList> states{peopleOf(*book)};
        for (int i = 0; i < 25; ++i) {
            changes.change();
            if (QByteArrayList state = peopleOf(*book); state != states.back())
                states += state;
            verifyNames(*book);
        }
        QCoreApplication::processEvents(); // what was done is noted
        QSignalSpy applied(&undo, &UndoSteps::applied);
        const auto follow = [&](void (UndoSteps::*step)(), qsizetype state) {
            (undo.*step)();
            QVERIFY(!applied.isEmpty() || applied.wait());
            applied.clear();
            QCOMPARE(peopleOf(*book), states[state]);
            verifyNames(*book);
        };
        for (qsizetype state = states.size() - 2; state >= 0; --state)
            follow(&UndoSteps::undo, state);
        QVERIFY(!undo.canUndo());
        for (qsizetype state = 1; state < states.size(); ++state)
            follow(&UndoSteps::redo, state);
        QVERIFY(!undo.canRedo());
        ABAddressBook::setSharedAddressBook(nullptr);
    }
};

QTEST_GUILESS_MAIN(UndoTest)
#include "UndoTest.moc"
