// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/RestorePlan.h"
#include "contacts/stores/sqlite/SqliteStore.h"
#include "results/FixAll.h"
#include "scan/ScanAddressBook.h"
#include "support/Answers.h"
#include "support/LogCapture.h"
#include "support/TestPeople.h"

#include <QAbstractItemModelTester>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

/// A program without windows around the results; keeps what it was asked for.
class Surroundings : public ResultsDelegate
{
public:
    AlertPanel &alertPanel() override { return m_answers; }
    void selectInAddressBook(const ABPersonPtr &person) override
    {
        m_asked += QStringLiteral("select ") + person->uniqueId();
    }
    void editInAddressBook(const ABPersonPtr &person) override
    {
        m_asked += QStringLiteral("edit ") + person->uniqueId();
    }
    void reloadUI() override { m_asked += QStringLiteral("back"); }
    qsizetype subviewCount() const override { return 3; }

    QStringList takeAsked() { return std::exchange(m_asked, {}); }
    const QStringList &questions() const { return m_answers.questions(); }

private:
    Answers m_answers{true};
    QStringList m_asked;
};

} // namespace

/// The tree of findings, what is selected, and what repairs make of both.
class ResultsTest : public QObject
{
    Q_OBJECT

private:
    static QString u(const char *text) { return QString::fromUtf8(text); }

    /// Groups, and indented under them their findings; the selected row is marked.
    static QString treeOf(OutlineViewController &controller)
    {
        QString lines;
        const ResultTree &model = controller.model();
        const auto mark = [&](const QModelIndex &index) {
            return model.nodeAt(index) == controller.selectedItem() ? u("*") : u("");
        };
        for (int i = 0; i < model.rowCount(); ++i) {
            const QModelIndex group = model.index(i, 0);
            lines += mark(group) + group.data().toString() + u'\n';
            for (int k = 0; k < model.rowCount(group); ++k) {
                const QModelIndex finding = model.index(k, 0, group);
                lines += u(" ") + mark(finding) + finding.data(ResultTree::UidRole).toString() + u'\n';
            }
        }
        return lines;
    }

    /// A controller on an address book and a result that names people by uid.
    struct Setup
    {
        explicit Setup(std::initializer_list<QByteArray> people) : book(sharedBookOf(people)), controller(surroundings)
        { }
        void find(Condition condition, const QStringList &uids)
        {
            std::vector<ABPersonPtr> found;
            for (const QString &uid : uids)
                found.push_back(book->personWithUniqueId(uid));
            result.insert(condition, found);
        }
        void show()
        {
            controller.setOutlineViewDataSouce(result);
            controller.selectRow(1);
        }
        void fixWith(QLatin1StringView option)
        {
            controller.chooseOption(*controller.detailPanel().optionGroup, option);
            controller.FixFounction();
        }

        std::shared_ptr<ABAddressBook> book;
        Surroundings surroundings;
        ScanResult result;
        OutlineViewController controller;
        QAbstractItemModelTester tester{&controller.model(), QAbstractItemModelTester::FailureReportingMode::Fatal};
    };

private Q_SLOTS:
    void cleanup() { ABAddressBook::setSharedAddressBook(nullptr); }

    void groupsStandInTheirOrder()
    {
        Setup s({"{'uid':'a','firstName':'Ann'}", "{'uid':'b','image':'AAAA'}"});
        s.find(Condition::InvalidChar, {u("b"), u("a")});
        s.find(Condition::UnusualSuffix, {u("a")});
        s.result.insert(Condition::ShareEmail,
            std::vector<EmailMatch>{
                {s.book->people()[0], {s.book->people()[1]}, u("l")}, {s.book->people()[0], {}, QString()}});
        s.show();
        QCOMPARE(
            treeOf(s.controller), u("UNUSUAL SUFFIX\n *a\nSHARE EMAIL ADDRESS\n a\n a\nINVALID CHARACTERS\n b\n a\n"));
        QCOMPARE(s.controller.findingCount(), 5);
        const PersonItemPtr shared = s.controller.child(0, s.controller.child(1, nullptr));
        QCOMPARE(shared->duplicateEmailType(), u("l"));
        QCOMPARE(shared->duplicateEmailArray().front()->uniqueId(), u("b"));
        const PersonItemPtr invalid = s.controller.itemAtRow(6);
        RowView row = s.controller.viewForTableColumn(invalid);
        QCOMPARE(row.text + u'|' + row.myTextField + u'|' + QString(row.identifier),
            u("exist invalid characters|(null) (null)|MainCell"));
        QCOMPARE(row.picture, QByteArray(3, '\0'));
        row = s.controller.viewForTableColumn(s.controller.itemAtRow(0));
        QCOMPARE(row.frame, QRectF(1, 5, 316, 17));
        QCOMPARE(QString(row.identifier), u("HeaderTextField"));
        QVERIFY(s.controller.isItemExpandable(nullptr) && !s.controller.isItemExpandable(invalid));
        QVERIFY(!OutlineViewController::creatFatherNode(u("x"), {}));
    }

    void groupsAreNotSelected()
    {
        Setup s({"{'uid':'a','suffix':'x'}"});
        s.find(Condition::UnusualSuffix, {u("a")});
        s.show();
        s.controller.selectItem(s.controller.child(0, nullptr));
        QCOMPARE(treeOf(s.controller), u("UNUSUAL SUFFIX\n *a\n"));
        LogCapture log;
        s.controller.selectRow(0); // as the step after a fix may
        QCOMPARE(log.take(), QStringList(u("results: 不要选中根节点")));
        QVERIFY(s.controller.detailPanel().problemText.startsWith(u("\"x\" isn't")));
        s.controller.openInContacts();
        QCOMPARE(s.surroundings.takeAsked(), QStringList());
    }

    void thePanelDescribesTheSelection()
    {
        Setup s({"{'uid':'a','firstName':'A','email':[{'label':'own','value':'o'},{'label':'_$!<Work>!$_','value':'v'},"
                 "{'label':'_$!<Work>!$_','value':'w'}]}",
            "{'uid':'b','lastName':'Lee','firstName':'Ann','image':'AAAA'}", "{'uid':'c'}",
            "{'uid':'d','lastName':'Bo'}"});
        const auto people = s.book->people();
        s.result.insert(Condition::ShareEmail,
            std::vector<EmailMatch>{{people[0], {people[1], people[2], people[3]}, u("_$!<Work>!$_")}});
        s.find(Condition::UnusualTitle, {u("b")});
        s.show();
        QCOMPARE(s.controller.detailPanel().problemText,
            u("\"(null)\" isn't an allowed title which is showed in the Preference. Syncing unusual titles can cause "
              "names to get mangled."));
        QCOMPARE(s.controller.detailPanel().optionGroupOrigin, QPoint(16, 75));
        QVERIFY(s.controller.buttonsEnabled() && s.controller.preview().fields.size() > 10);
        LogCapture log;
        s.controller.selectRow(3);
        QCOMPARE(log.take(),
            QStringList({u("results: 视图控制器View的子视图个数：3"), u("fix: Remove the email from this contact")}));
        const DetailPanel panel = s.controller.detailPanel();
        QCOMPARE(panel.email, u("w"));
        QCOMPARE(panel.name, u("A (null)"));
        QVERIFY(panel.picture.isEmpty());
        QCOMPARE(panel.problemText, u(" This contact has the same email address (\"w\") as Ann Lee,Bo"));
        QCOMPARE(panel.optionGroupOrigin, QPoint(16, 0));
        s.controller.openInContacts();
        QCOMPARE(s.surroundings.takeAsked(), QStringList(u("select a")));
        QVERIFY(!s.controller.chooseOption(OptionGroup::ShareEmail, u("Remove the title")));
        QVERIFY(s.controller.chooseOption(OptionGroup::ShareEmail, kDeleteThisContact));
        QCOMPARE(s.controller.preview().fields.front().text, u("the contact selected will be deleted:"));
    }

    void closingGroupsMovesTheSelection()
    {
        Setup s({"{'uid':'a'}", "{'uid':'b'}"});
        s.find(Condition::UnusualSuffix, {u("a")});
        s.find(Condition::UnusualTitle, {u("b")});
        s.show();
        LogCapture log;
        s.controller.setItemExpanded(s.controller.child(0, nullptr), false);
        QCOMPARE(treeOf(s.controller), u("UNUSUAL SUFFIX\n a\nUNUSUAL TITLE\n *b\n"));
        QCOMPARE(log.take().last(), u("results: 选中的row：2"));
        QVERIFY(!s.controller.showsTips());
        s.controller.setItemExpanded(s.controller.child(1, nullptr), false);
        QVERIFY(s.controller.showsTips() && !s.controller.buttonsEnabled() && !s.controller.selectedItem());
        QCOMPARE(s.controller.rowForItem(s.controller.child(0, s.controller.child(1, nullptr))), -1);
        s.controller.setItemExpanded(s.controller.child(1, nullptr), true);
        s.controller.selectRow(2);
        QVERIFY(!s.controller.showsTips() && s.controller.buttonsEnabled());
    }

    void deletionSweepsThePersonAndKeepsEmptyGroups()
    {
        Setup s({"{'uid':'a','firstName':'A'}", "{'uid':'b','firstName':'B'}"});
        s.find(Condition::SingleName, {u("a"), u("b")});
        s.find(Condition::UnusualTitle, {u("a")});
        s.find(Condition::UnusualSuffix, {u("b"), u("a")});
        s.show();
        s.controller.selectRow(6);
        LogCapture log;
        s.fixWith(kDeleteThisContact);
        QCOMPARE(log.take().count(u("fix: 找到与那个人相同的")), 2);
        QCOMPARE(s.surroundings.questions(),
            QStringList(u("Are you sure you want to delete the selected person ?|This person will also delete from "
                          "Contacts. |Delete|Cancel")));
        QCOMPARE(treeOf(s.controller), u("UNUSUAL SUFFIX\n b\nUNUSUAL TITLE\nINCOMPLETE NAME\n *b\n"));
        QVERIFY(!s.controller.isItemExpandable(s.controller.child(1, nullptr)));
        s.fixWith(kDeleteThisContact); // its group goes, and no finding is left
        QCOMPARE(treeOf(s.controller), u("UNUSUAL SUFFIX\nUNUSUAL TITLE\n"));
        QVERIFY(s.controller.showsTips() && !s.controller.canFix() && !s.controller.selectedItem());
        QCOMPARE(s.book->people().size(), 0);
        s.controller.FixFounction();
        QCOMPARE(s.surroundings.takeAsked(), QStringList());
    }

    void deletionOfSharersPrunesGroups()
    {
        Setup s({"{'uid':'a'}", "{'uid':'b'}"});
        s.find(Condition::UnusualTitle, {u("b")});
        s.find(Condition::UnusualSuffix, {u("a")});
        s.result.insert(
            Condition::ShareEmail, std::vector<EmailMatch>{{s.book->people()[0], {s.book->people()[1]}, {}}});
        s.show();
        s.controller.selectRow(5);
        s.fixWith(kDeleteDuplicateContacts);
        QCOMPARE(treeOf(s.controller), u("UNUSUAL SUFFIX\n *a\n"));
    }

    void findingsKeepTheirAddress()
    {
        Setup s({"{'uid':'a','email':[{'label':'l','value':'x'},{'label':'l','value':'y'}]}",
            "{'uid':'b','email':[{'value':'x'}]}", "{'uid':'c','email':[{'value':'y'}]}"});
        const QStringList title{u("Emails duplicated among multiple contacts")};
        s.result = ScanAddressBook::examine(title);
        s.show();
        s.controller.reexamine({u("a")}, ScanAddressBook::examine(title));
        s.controller.selectRow(2);
        s.fixWith(kDeleteDuplicateContacts);
        QCOMPARE(uidsOf(s.book->people()), QStringList({u("a"), u("b")}));
    }

    void sharersAreFoundThroughEachOther()
    {
        Setup s({"{'uid':'a','email':[{'value':'x'}]}", "{'uid':'b','email':[{'value':'x'}]}"});
        const auto a = s.book->people()[0];
        const auto b = s.book->people()[1];
        s.result.insert(Condition::ShareEmail, std::vector<EmailMatch>{{a, {b}, {}, u("x")}});
        s.show();
        ScanResult now; // as when a was removed and brought back behind b
        now.insert(Condition::ShareEmail, std::vector<EmailMatch>{{b, {a}, {}, u("x")}});
        s.controller.reexamine({u("a")}, now);
        QCOMPARE(treeOf(s.controller), u("SHARE EMAIL ADDRESS\n *b\n"));
        s.controller.reexamine({u("a")}, {}); // which has another address
        QCOMPARE(treeOf(s.controller), QString());
    }

    void theSelectionMovesOn()
    {
        Setup s({"{'uid':'a'}", "{'uid':'b'}", "{'uid':'c'}", "{'uid':'d'}"});
        s.find(Condition::InvalidChar, {u("a"), u("b"), u("c")});
        s.find(Condition::BlankName, {u("d")});
        s.show();
        s.controller.selectRow(4);
        QSignalSpy fixed(&s.controller, &OutlineViewController::fixed);
        s.controller.FixFounction();
        QCOMPARE(treeOf(s.controller), u("BLANK NAME\n d\nINVALID CHARACTERS\n *a\n c\n"));
        s.controller.FixFounction();
        s.controller.setItemExpanded(s.controller.child(0, nullptr), false);
        s.controller.FixFounction(); // the last of its group: the first group opens again
        QCOMPARE(treeOf(s.controller), u("BLANK NAME\n *d\n"));
        QCOMPARE(s.surroundings.takeAsked(), QStringList({u("edit b"), u("edit a"), u("edit c")}));
        s.controller.FixFounction();
        QCOMPARE(treeOf(s.controller), QString());
        QCOMPARE(s.surroundings.takeAsked(), QStringList({u("edit d"), u("back")}));
        QCOMPARE(fixed.count(), 4);
    }

    void allOfAGroupEqualOneByOne_data()
    {
        QTest::addColumn<Condition>("condition");
        QTest::addColumn<QLatin1StringView>("option");
        for (const auto &option : {kMergeContacts, kDeleteDuplicateContacts, kRemoveEmail})
            QTest::addRow("shared: %s", option.data()) << Condition::ShareEmail << option;
        for (const auto &option : {kMergeContacts, kDeleteDuplicateContacts})
            QTest::addRow("duplicates: %s", option.data()) << Condition::DuplicateContacts << option;
    }

    void allOfAGroupEqualOneByOne()
    {
        QFETCH(const Condition, condition);
        QFETCH(const QLatin1StringView, option);
        const QTemporaryDir folder;
        const auto makeBook = [&folder](const QString &name) { // on a store with a history
            const auto people =
                sharedBookOf({"{'uid':'a','firstName':'A','nickname':'x','email':[{'value':'x'},{'value':'y'}]}",
                    "{'uid':'b','firstName':'B','email':[{'value':'x'}]}",
                    "{'uid':'c','firstName':'C','email':[{'value':'y'}]}",
                    "{'uid':'d','firstName':'D','nickname':'d','email':[{'value':'z'}]}",
                    "{'uid':'e','firstName':'E','email':[{'value':'z'}]}", "{'uid':'f','firstName':'A','note':'f'}",
                    "{'uid':'g','firstName':'C','nickname':'g'}"});
            const auto book = *ABAddressBook::open(std::move(*SqliteStore::open(folder.filePath(name))));
            for (const auto &person : people->people())
                book->addRecord(std::make_shared<ABPerson>(person->uniqueId(), person->record()));
            book->save();
            ABAddressBook::setSharedAddressBook(book);
            return book;
        };
        const QStringList title{conditionInfo(condition).title};
        Surroundings surroundings;
        const auto results = [&] {
            auto made = std::make_unique<OutlineViewController>(surroundings);
            made->setOutlineViewDataSouce(ScanAddressBook::examine(title));
            made->chooseOption(conditionGroup(condition).optionGroup, option);
            return made;
        };
        static const QRegularExpression newUid(u("\"uid\":\"[^\"]{9,}\"")); // of a merge
        const auto texts = [](const ABAddressBook &book) { return QString::fromUtf8(textOf(book)).remove(newUid); };

        const auto oneByOne = makeBook(u("1"));
        auto controller = results();
        QList<PersonItemPtr> nodes = controller->rootNodes().front()->childrenArray();
        for (const auto &node : nodes) {
            if (controller->model().contains(node) && !node->isGone()) {
                controller->selectItem(node);
                controller->FixFounction();
            }
        }
        const auto book = makeBook(u("2"));
        const QByteArray before = textOf(*book);
        controller = results();
        nodes = controller->rootNodes().front()->childrenArray();
        QCOMPARE(controller->model().rowCount(controller->model().index(0, 0)), nodes.size());
        FixAll repairs(*controller, nodes, surroundings.alertPanel());
        FixReport report;
        while (!repairs.isAtEnd()) {
            const FixAll::Step step = repairs.next();
            report.count(step.end, step.outcome);
        }
        QCOMPARE(texts(*book), texts(*oneByOne));
        QVERIFY(textOf(*book) != before && report.repaired > 1 && report.failed == 0);

        const auto history = *book->history();
        QCOMPARE(
            history.front().cause.description.section(u(" ("), -1), QString::number(nodes.size()) + u(" findings)"));
        QVERIFY(restore(*book, *planRestore(*book, {history.front().cause.id})));
        controller->reexamine(
            QStringList(uidsOf(book->people())) + controller->uids(), ScanAddressBook::examine(title));
        QCOMPARE(controller->findingCount(), nodes.size());
        QCOMPARE(QString::fromUtf8(textOf(*book)).split(u'\n').size(), QString::fromUtf8(before).split(u'\n').size());
        for (const QByteArray &person : before.split('\n'))
            QVERIFY(textOf(*book).contains(person));
    }

    void theFilterNarrowsWhatIsSelected()
    {
        Setup s({"{'uid':'a','firstName':'Ann','suffix':'x'}", "{'uid':'b','suffix':'x','phone':[{'value':'123'}]}",
            "{'uid':'c','note':'ann 123'}"});
        s.find(Condition::UnusualSuffix, {u("a"), u("b")});
        s.find(Condition::BlankName, {u("c")});
        s.show();
        s.controller.setFilter(u("123"));
        QCOMPARE(treeOf(s.controller), u("UNUSUAL SUFFIX\n a\n *b\nBLANK NAME\n c\n"));
        s.controller.setFilter(u(" 12 ANN "));
        QCOMPARE(s.controller.selectedItem()->person()->uniqueId(), u("c"));
        s.controller.setFilter(u("12"));
        s.controller.selectRow(2);
        s.fixWith(kRemoveTheSuffix);
        QCOMPARE(treeOf(s.controller), u("UNUSUAL SUFFIX\n a\nBLANK NAME\n *c\n"));
        s.controller.setFilter(u("nothing has this"));
        QVERIFY(!s.controller.selectedItem() && s.controller.showsTips());
    }

    void nodesAreFreedAndForgotten()
    {
        Setup s({"{'uid':'a'}"});
        s.find(Condition::BlankName, {u("a")});
        s.show();
        const std::weak_ptr<PersonItem> node = s.controller.selectedItem();
        QVERIFY(s.controller.model().contains(node.lock()));
        s.controller.setOutlineViewDataSouce({});
        QCOMPARE(s.controller.findingCount(), 0);
        QVERIFY(node.expired());
    }
};

QTEST_GUILESS_MAIN(ResultsTest)
#include "ResultsTest.moc"
