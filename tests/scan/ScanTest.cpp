// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/Job.h"
#include "contacts/model/ABLabels.h"
#include "generator/ContactGenerator.h"
#include "scan/ScanAddressBook.h"
#include "support/LogCapture.h"
#include "support/TestPeople.h"

#include <QSignalSpy>
#include <QTest>

namespace {

class RecordingDelegate : public ScanDelegate, public AlertPanel
{
public:
    void closeProgress() override { calls += QStringLiteral("closeProgress"); }
    void makeButtonEnable() override { calls += QStringLiteral("makeButtonEnable"); }
    AlertPanel &alertPanel() override { return *this; }
    Answer runAlertPanel(const QString &title, const QString &message, const QString &, const QString &other) override
    {
        calls += title + u'|' + message + u'|' + other;
        return Answer::Default;
    }

    QStringList calls;
};

QString matchesAsText(const std::vector<EmailMatch> &matches)
{
    QStringList texts;
    for (const auto &match : matches) {
        texts += match.searchedPerson->uniqueId() + u'=' + uidsOf(match.matchPersonsArray).join(u'+') + u'@'
            + match.duplicateEmailType;
    }
    return texts.join(u' ');
}

} // namespace

/// The conditions, one by one and together.
class ScanTest : public QObject
{
    Q_OBJECT

private:
    RecordingDelegate m_delegate;

    static QString u(const char *text) { return QString::fromUtf8(text); }

    ScanResult scan(const QStringList &titles)
    {
        ScanAddressBook scanner(m_delegate);
        ScanResult result;
        connect(&scanner, &ScanAddressBook::scanOver, &scanner, [&result](const ScanResult &found) { result = found; });
        scanner.scanEntireAddressBook(titles);
        return result;
    }

private Q_SLOTS:
    void init() { m_delegate.calls.clear(); }

    void ruleFindsPerson_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QByteArray>("person");
        QTest::addColumn<bool>("found");
        for (const QStringList &lines : blocksOf(u("tests/data/scan/rules.txt"))) {
            for (const QString &line : lines.mid(1))
                QTest::addRow("%s %s", qUtf8Printable(lines.front()), qUtf8Printable(line))
                    << lines.front() << line.mid(line.indexOf(u'{')).toUtf8() << line.startsWith(u"found");
        }
    }
    void ruleFindsPerson()
    {
        QFETCH(QString, title);
        QFETCH(QByteArray, person);
        QFETCH(bool, found);
        const auto book = sharedBookOf({person});
        const ScanResult result = scan({title});
        const Findings *findings = result.find(*conditionTitled(title));
        QCOMPARE(findings != nullptr, found);
        if (found)
            QCOMPARE(uidsOf(std::get<0>(*findings)), uidsOf(book->people()));
    }

    void repeatedNamesAreGroupedByTheJoinedName()
    {
        sharedBookOf({"{'uid':'1'}", "{'uid':'2','firstName':'Ann','lastName':'Lee'}",
            "{'uid':'3','firstName':'ann','lastName':'Lee'}", "{'uid':'4','firstName':'An','lastName':'nLee'}",
            "{'uid':'5'}", "{'uid':'6','firstName':'Ann','lastName':'Lee'}",
            "{'uid':'7','firstName':'(null)(null)','lastName':''}", "{'uid':'8','firstName':'Bo'}",
            "{'uid':'9','firstName':'Bo','lastName':'(null)'}", "{'uid':'10','firstName':'Cy','lastName':''}",
            "{'uid':'11','firstName':'Cy','lastName':''}"});
        const ScanAddressBook scanner(m_delegate);
        QCOMPARE(uidsOf(scanner.test()).join(u' '), u("1 2 8 10"));
        QCOMPARE(uidsOf(scanner.findDuplicatesContacts()).join(u' '), u("2 6 10 11"));
    }

    void sharedEmailsFollowTheOrderOfSearching()
    {
        // b is a match of a, so what only b and c share is never searched; d shares two addresses and one of them
        // twice.
        sharedBookOf({"{'uid':'a','email':[{'label':'L','value':'x'},{'value':'own'}]}",
            "{'uid':'b','email':[{'value':'x'},{'value':'y'}]}", "{'uid':'c','email':[{'value':'y2'},{'value':'y'}]}",
            "{'uid':'d','email':[{'label':'1','value':'p'},{'label':'2','value':'q'},{'label':'3','value':'p'}]}",
            "{'uid':'e','email':[{'value':'q'},{'value':'q'}]}", "{'uid':'f','email':[{'value':'p'}]}",
            "{'uid':'g','email':[{'value':'own2'},{'value':'own2'}]}"});
        QCOMPARE(matchesAsText(ScanAddressBook(m_delegate).findDuplicateEmailInContacts()),
            u("a=b@L c=b@ d=f@1 d=e@2 d=f@3"));
    }

    void driverRunsTitlesInTheirOrder()
    {
        sharedBookOf({"{'uid':'a','firstName':'Ann','note':' '}", "{'uid':'b'}"});
        const auto keys = [this](const QStringList &titles) {
            QStringList found;
            const ScanResult result = scan(titles);
            for (const auto &[condition, findings] : result)
                found += conditionInfo(condition).key;
            return found.join(u' ');
        };
        QCOMPARE(keys({u("Blank name"), u("Note with spacing only"), u("Unusual title"), u("Incomplete name")}),
            u("BlankName EmptyNotes SingleName"));
        QCOMPARE(keys({u("incomplete name"), u("Blank name "), u("nonsense"), u("Incomplete name"), u("Blank name"),
                     u("Incomplete name")}),
            u("SingleName BlankName"));
        QCOMPARE(keys(conditionTitles()), u("SingleName EmptyNotes BlankName"));
        QVERIFY(m_delegate.calls.isEmpty());
    }

    void anEmptyScanTellsTheUser()
    {
        sharedBookOf({"{'uid':'a','firstName':'Ann','lastName':'Lee'}"});
        ScanAddressBook scanner(m_delegate);
        const QSignalSpy over(&scanner, &ScanAddressBook::scanOver);
        for (const QStringList &titles : {conditionTitles(), QStringList(), QStringList(u("x"))}) {
            m_delegate.calls.clear();
            scanner.scanEntireAddressBook(titles);
            QCOMPARE(over.count(), 0);
            QCOMPARE(m_delegate.calls,
                QStringList({u("closeProgress"), u("Notes|Scan completed, no contact matches the condition!|"),
                    u("makeButtonEnable")}));
        }
    }

    void aScanRunsOnItsOwnThread()
    {
        const auto book = sharedBookOf({"{'uid':'a'}"});
        ScanAddressBook scanner(m_delegate);
        std::atomic<int> results = 0;
        std::thread::id thread;
        connect(
            &scanner, &ScanAddressBook::scanOver, &scanner,
            [&](const ScanResult &) {
                thread = std::this_thread::get_id();
                ++results;
            },
            Qt::DirectConnection);
        {
            Job job;
            for (int i = 0; i < 20; ++i) {
                job.start([&scanner] { scanner.scanEntireAddressBook(conditionTitles()); });
                while (job.isRunning())
                    book->people().first()->setValue(QString::number(i), kABNoteProperty);
            }
        }
        QCOMPARE(results, 20);
        QVERIFY(thread != std::this_thread::get_id());
    }

    void diagnosticsFollowTheFindings()
    {
        sharedBookOf({"{'uid':'a','phone':[{'value':'a'},{'value':'b'}]}", "{'uid':'b','note':' x '}",
            "{'uid':'c','note':' '}"});
        const LogCapture log;
        QLoggingCategory::setFilterRules(u("peoplenook.*.debug=true")); // traces too
        scan({u("Invalid characters"), u("Note with spacing only"), u("Duplicate contacts")});
        const QStringList lines = log.of(u("peoplenook.scan"));
        QCOMPARE(lines.filter(u("电话号码非法")).size(), 1);
        QCOMPARE(lines.filter(u("扫描花费的时间：0.")).size(), 1);
        QCOMPARE(log.of(u("peoplenook.scan.trace")).filter(u("字符是空空格")).size(), 2);
    }

    /// The promises that load tests and benchmarks build on, beyond the number of names that the generator has.
    void generatedContactsHaveTheirKnownFindings()
    {
        constexpr int kCount = 20'500;
        ContactGenerator generator(kCount, 42);
        ContactGenerator more(2 * kCount, 42);
        std::vector<StoredRecord> people;
        for (StoredRecord person = generator.next(); person.record; person = generator.next()) {
            people.push_back(person);
            const StoredRecord same = more.next();
            QVERIFY(same.uid == person.uid && *same.record == *person.record);
        }
        QCOMPARE(int(people.size()), kCount);
        sharedBookOf(people);
        const ScanResult result = scan(conditionTitles());
        for (const auto &[key, expected] : generator.expected().counts) {
            qint64 found = 0;
            for (const auto &[condition, findings] : result) {
                if (conditionInfo(condition).key == key)
                    found = std::visit([](const auto &list) { return qint64(list.size()); }, findings);
            }
            QVERIFY2(found == expected, qPrintable(u("%1: %2, not %3").arg(QString(key)).arg(found).arg(expected)));
        }
    }
};

QTEST_GUILESS_MAIN(ScanTest)
#include "ScanTest.moc"
