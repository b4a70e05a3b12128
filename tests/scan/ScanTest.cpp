// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/Job.h"
#include "contacts/model/ABLabels.h"
#include "generator/ContactGenerator.h"
#include "scan/ScanLog.h"
#include "support/TestPeople.h"

#include <QRandomGenerator>
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

QStringList allTitles()
{
    QStringList titles;
    for (const Condition condition : preferredOrder())
        titles += conditionInfo(condition).title;
    return titles;
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
        const auto row = [](const char *title, const char *person, bool found) {
            QTest::addRow("%s %s", title, person) << u(title) << QByteArray(person) << found;
        };
        row("Incomplete name", "{'firstName':'Ann'}", true);
        row("Incomplete name", "{'lastName':'Lee','flags':0}", true);
        row("Incomplete name", "{'firstName':'Ann','flags':1}", false);
        row("Incomplete name", "{'firstName':'Ann','flags':17}", true);
        row("Incomplete name", "{'firstName':'','lastName':'Lee'}", false);
        row("Incomplete name", "{}", false);
        row("Blank name", "{}", true);
        row("Blank name", "{'flags':1,'organization':'Acme','nickname':'A'}", true);
        row("Blank name", "{'firstName':''}", false);
        row("Spacing in the first name", "{'firstName':'Mary Ann'}", true);
        row("Spacing in the first name", "{'firstName':' Ann'}", true);
        row("Spacing in the first name", "{'firstName':' '}", true);
        row("Spacing in the first name", "{'firstName':'Mary\\tAnn\\u00a0'}", false);
        row("Spacing in the first name", "{'lastName':'van Dam'}", false);
        for (const char *title : {"Mr", "mr", "2lt2ND", "gerneral", "LTJG"})
            row("Unusual title", qPrintable(u("{'title':'%1'}").arg(u(title))), false);
        for (const char *title : {"Mr.", "MR", " Mr", "", "2lt", "2ND", "General", "1st "})
            row("Unusual title", qPrintable(u("{'title':'%1'}").arg(u(title))), true);
        row("Unusual title", "{}", false);
        for (const char *suffix : {"Jr", "jr", "ESQ", "MS", "ms", "I", "2ND"})
            row("Unusual suffix", qPrintable(u("{'suffix':'%1'}").arg(u(suffix))), false);
        for (const char *suffix : {"Jr.", "JR", "Esq", "Ph.D.", "Ms", "i", ""})
            row("Unusual suffix", qPrintable(u("{'suffix':'%1'}").arg(u(suffix))), true);
        for (const char *text : {" ", "   "})
            row("Note with spacing only", qPrintable(u("{'note':'%1'}").arg(u(text))), true);
        for (const char *text : {"", " \\t ", " x", "x", "\\u00a0", "\\n"})
            row("Note with spacing only", qPrintable(u("{'note':'%1'}").arg(u(text))), false);
        row("Nickname with spacing only", "{'nickname':'  '}", true);
        row("Nickname with spacing only", "{'note':'  '}", false);
        row("Invalid characters", "{'email':[{'value':'a@b.com'},{'value':'a@b.org'}]}", true);
        row("Invalid characters", "{'email':[{'value':'a@b.COM'}]}", true);
        row("Invalid characters", "{'email':[{'value':'ab.com'}]}", true);
        row("Invalid characters", "{'email':[{'value':'.com@'}]}", false);
        row("Invalid characters", "{'email':[{'value':''}]}", true);
        row("Invalid characters", "{'phone':[{'value':'555 0100'},{'value':'1-800-FLOWERS'}]}", true);
        row("Invalid characters", "{'phone':[{'value':'+49 (0) 30.1 é я'}]}", false);
        row("Invalid characters", "{'phone':[],'note':'abc'}", false);
        row("Duplicate email address", "{'email':[{'label':'x','value':'a'},{'value':'b'},{'value':'a'}]}", true);
        row("Duplicate email address", "{'email':[{'value':'a'},{'value':'A'},{'value':'a '}]}", false);
        row("Duplicate phone number", "{'phone':[{'value':'1'},{'value':'1'},{'value':'1'}]}", true);
        row("Duplicate phone number", "{'phone':[{'value':'555-1234'},{'value':'5551234'}]}", false);
        row("Duplicate address",
            "{'address':[{'value':{'city':'U','zip':'1'}},{'label':'b','value':{'zip':'1','city':'U'}}]}", true);
        row("Duplicate address", "{'address':[{'value':{'city':'U'}},{'value':{'city':'U','zip':''}}]}", false);
        row("Duplicate address", "{'address':[{'value':{}},{'value':{}}]}", true);
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
        QCOMPARE(keys(allTitles()), u("SingleName EmptyNotes BlankName"));
        QVERIFY(m_delegate.calls.isEmpty());
    }

    void anEmptyScanTellsTheUser_data()
    {
        QTest::addColumn<QStringList>("titles");
        QTest::newRow("nothing found") << allTitles();
        QTest::newRow("nothing chosen") << QStringList();
        QTest::newRow("nothing known") << QStringList(u("x"));
    }
    void anEmptyScanTellsTheUser()
    {
        QFETCH(QStringList, titles);
        sharedBookOf({"{'uid':'a','firstName':'Ann','lastName':'Lee'}"});
        ScanAddressBook scanner(m_delegate);
        const QSignalSpy over(&scanner, &ScanAddressBook::scanOver);
        scanner.scanEntireAddressBook(titles);
        QCOMPARE(over.count(), 0);
        QCOMPARE(m_delegate.calls,
            QStringList({u("closeProgress"), u("Notes|Scan completed, no contact matches the condition!|"),
                u("makeButtonEnable")}));
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
                job.start([&scanner] { scanner.scanEntireAddressBook(allTitles()); });
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
        static QStringList lines;
        lines.clear();
        const auto previous =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &context, const QString &text) {
                lines += u(context.category) + u' ' + text;
            });
        QLoggingCategory::setFilterRules(u("peoplenook.*.debug=true"));
        scan({u("Invalid characters"), u("Note with spacing only"), u("Duplicate contacts")});
        QLoggingCategory::setFilterRules(QString());
        qInstallMessageHandler(previous);
        QCOMPARE(lines.filter(u("peoplenook.scan 电话号码非法")).size(), 1);
        QCOMPARE(lines.filter(u("peoplenook.scan.trace 字符是空空格")).size(), 2);
        QCOMPARE(lines.filter(u("peoplenook.scan 扫描花费的时间：0.")).size(), 1);
        QVERIFY(!lcScanTrace().isDebugEnabled());
    }

    void generatedContactsHaveTheirKnownFindings_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<quint32>("seed");
        QTest::newRow("1000") << 1000 << 1U;
        QTest::newRow("5000") << 5000 << 42U;
    }
    void generatedContactsHaveTheirKnownFindings()
    {
        QFETCH(int, count);
        QFETCH(quint32, seed);
        ContactGenerator generator(count, seed);
        std::vector<StoredRecord> people;
        for (StoredRecord person = generator.next(); person.record; person = generator.next())
            people.push_back(person);
        QCOMPARE(int(people.size()), count);
        sharedBookOf(people);
        const ScanResult result = scan(allTitles());
        for (const auto &[key, expected] : generator.expected().counts) {
            qint64 found = 0;
            for (const auto &[condition, findings] : result) {
                if (conditionInfo(condition).key == key)
                    found = std::visit([](const auto &list) { return qint64(list.size()); }, findings);
            }
            QVERIFY2(found == expected, qPrintable(u("%1: %2, not %3").arg(QString(key)).arg(found).arg(expected)));
        }
    }

    /// The finders work with hashes; here they meet the plain reading of the same rules on people who collide a lot.
    void hashedFindersAgreeWithPlainOnes()
    {
        QRandomGenerator random(20261121);
        const QStringList names{u("A"), u("An"), u("nB"), u("B"), u(""), u("(null)")};
        const QStringList emails{u("x"), u("y"), u("z"), u("w"), u("v"), u("t")};
        for (int round = 0; round < 200; ++round) {
            std::vector<StoredRecord> people;
            for (int i = 0; i < 12; ++i) {
                PersonRecord record;
                if (random.bounded(4))
                    record.setText(kABFirstNameProperty, names[random.bounded(int(names.size()))]);
                if (random.bounded(4))
                    record.setText(kABLastNameProperty, names[random.bounded(int(names.size()))]);
                ABMutableMultiValue values;
                for (int n = random.bounded(12) == 0 ? 10 : random.bounded(3); n > 0; --n)
                    values.addValue(emails[random.bounded(int(emails.size()))], QString::number(n));
                record.setMultiValue(kABEmailProperty, values);
                people.push_back({QString::number(i), std::make_shared<const PersonRecord>(record)});
            }
            const auto book = sharedBookOf(people);
            const ScanAddressBook scanner(m_delegate);
            QCOMPARE(uidsOf(scanner.test()), plainRepeatedNames(*book));
            QCOMPARE(uidsOf(scanner.findDuplicatesContacts()), plainPeopleOfSameName(*book));
            QCOMPARE(matchesAsText(scanner.findDuplicateEmailInContacts()), plainSharedEmails(*book));
            QCOMPARE(uidsOf(scanner.findDuplicateEmailInOnePerson()), plainRepeatedEmails(*book));
        }
    }

private:
    static QString nameOf(const ABPersonPtr &person, ABProperty property)
    {
        const ABValue value = person->valueForProperty(property);
        return std::holds_alternative<QString>(value) ? std::get<QString>(value) : QString();
    }

    static QStringList plainRepeatedNames(const ABAddressBook &book)
    {
        const auto key = [](const ABPersonPtr &person) {
            const QString first = nameOf(person, kABFirstNameProperty);
            const QString last = nameOf(person, kABLastNameProperty);
            return (first.isNull() ? u("(null)") : first) + (last.isNull() ? u("(null)") : last);
        };
        QStringList keys;
        for (const auto &person : book.people())
            keys += key(person);
        QStringList found;
        for (qsizetype i = 0; i < keys.size(); ++i) {
            if (keys.indexOf(keys[i]) == i && keys.count(keys[i]) > 1)
                found += book.people().at(i)->uniqueId();
        }
        return found;
    }

    static QStringList plainPeopleOfSameName(const ABAddressBook &book)
    {
        const auto people = book.people();
        QStringList found;
        for (qsizetype i = 0; i < people.size(); ++i) {
            const QString first = nameOf(people[i], kABFirstNameProperty);
            const QString last = nameOf(people[i], kABLastNameProperty);
            QStringList group{people[i]->uniqueId()};
            for (qsizetype j = i + 1; j < people.size() && !first.isNull() && !last.isNull(); ++j) {
                const QString otherFirst = nameOf(people[j], kABFirstNameProperty);
                const QString otherLast = nameOf(people[j], kABLastNameProperty);
                if (!otherFirst.isNull() && !otherLast.isNull() && otherFirst == first && otherLast == last)
                    group += people[j]->uniqueId();
            }
            if (group.size() > 1 && !found.contains(group.first()))
                found += group;
        }
        return found;
    }

    static QString plainSharedEmails(const ABAddressBook &book)
    {
        QStringList reported;
        std::vector<EmailMatch> matches;
        for (const auto &person : book.people()) {
            if (reported.contains(person->uniqueId()))
                continue;
            const auto record = person->record();
            for (const auto &entry : record->multiValue(kABEmailProperty)->entries()) {
                auto holders = book.recordsMatchingSearchElement(
                    ABPerson::searchElementForProperty(kABEmailProperty, {}, {}, entry.text(), kABEqual));
                if (holders.size() < 2)
                    continue;
                reported += uidsOf(holders);
                holders.removeOne(person);
                matches.push_back({person, {holders.begin(), holders.end()}, entry.label});
            }
        }
        return matchesAsText(matches);
    }

    static QStringList plainRepeatedEmails(const ABAddressBook &book)
    {
        QStringList found;
        for (const auto &person : book.people()) {
            QStringList values;
            const auto record = person->record();
            for (const auto &entry : record->multiValue(kABEmailProperty)->entries())
                values += entry.text();
            if (values.removeDuplicates() > 0)
                found += person->uniqueId();
        }
        return found;
    }
};

QTEST_GUILESS_MAIN(ScanTest)
#include "ScanTest.moc"
