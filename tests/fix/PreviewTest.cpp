// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/AnalysePerson.h"
#include "fix/FixPreview.h"
#include "fix/RepairOptions.h"
#include "support/TestPeople.h"

#include <QTest>

/// Texts, places and colours of previews.
class PreviewTest : public QObject
{
    Q_OBJECT

private:
    static QString u(const char *text) { return QString::fromUtf8(text); }

    /// A field a line, as in the file of previews.
    static QStringList linesOf(const PreviewDocument &document)
    {
        QStringList lines;
        for (const auto &[frame, text, colour, change] : document.fields) {
            QString line = u("%1 %2 %3 ").arg(frame.x()).arg(frame.y()).arg(frame.width());
            if (colour)
                line += (colour->ink == PreviewColour::Ink::Red ? u("R%1 ") : u("B%1 ")).arg(colour->alpha * 100);
            lines += line + u'|' + text + (frame.height() == 17 ? u("|") : u("| of a wrong height"));
        }
        return lines;
    }

private Q_SLOTS:
    void previews_data() { addBlocks(u("tests/data/fix/previews.txt")); }
    void previews()
    {
        QFETCH(QStringList, lines);
        Finding finding{*conditionTitled(lines.at(1).section(u(": "), 0, 0)), {}, {}, {}};
        const QByteArray option = lines.at(1).section(u(": "), 1).toLatin1();
        QList<ABPersonPtr> people;
        for (lines = lines.mid(2); lines.value(0).startsWith(u'{'); lines.removeFirst())
            people += std::make_shared<ABPerson>(u("p"), recordFromText(lines.front().toUtf8()).record);
        finding.person = people.front();
        finding.duplicateEmailArray = people.mid(1);
        const PersonRecordPtr before = finding.person->record();
        QStringList found = linesOf(FixPreview(finding).creatScrollerViewWithTitle(QLatin1StringView(option)));
        QCOMPARE(finding.person->record(), before);
        if (lines.value(0) == u"...") {
            lines.removeFirst();
            found.removeIf([&lines](const QString &line) { return !lines.contains(line); });
            found.sort();
            lines.sort();
        }
        QCOMPARE(found, lines);
    }

    void changesAreMarked_data()
    {
        QTest::addColumn<QStringList>("marked");
        const auto add = [](QLatin1StringView option, const char *marked) {
            QTest::newRow(option.latin1()) << u(marked).split(u',');
        };
        add(kRemoveTheSuffix, "-x");
        add(kHyphenateFirstName, "-A B,+A-B");
        add(kConvertToCompany, "-person,+company");
        add(kDeleteThisContact, "-A B L,-x");
    }
    void changesAreMarked()
    {
        QFETCH(const QStringList, marked);
        Finding finding{Condition::UnusualSuffix, {}, {}, {}};
        finding.person = std::make_shared<ABPerson>(
            u("p"), recordFromText("{'firstName':'A B','lastName':'L','suffix':'x'}").record);
        QStringList found;
        const QLatin1StringView option(QTest::currentDataTag());
        for (const PreviewField &field : FixPreview(finding).creatScrollerViewWithTitle(option).fields) {
            if (field.change != PreviewChange::None)
                found += (field.change == PreviewChange::Added ? u'+' : u'-') + field.text;
        }
        QCOMPARE(found, marked);
    }

    void namesakesAreLookedUpInTheAddressBook()
    {
        const auto book = sharedBookOf({"{'uid':'a','firstName':'A','suffix':'x'}", "{'uid':'b','firstName':'B'}",
            "{'uid':'c','firstName':'A','suffix':'y'}"});
        const auto linesFor = [&](const char *uid) {
            const Finding finding{Condition::DuplicateContacts, book->personWithUniqueId(u(uid)), {}, {}};
            return linesOf(FixPreview(finding).creatScrollerViewWithTitle(kMergeContacts));
        };
        QVERIFY(!linesFor("a").filter(u("|y|")).isEmpty() && !linesFor("c").filter(u("|y|")).isEmpty());
        QCOMPARE(linesFor("b").size(), 1);
    }

    void analysePersonJoinsAddresses()
    {
        const ABPerson person(u("p"),
            recordFromText("{'firstName':'A','address':[{'label':'_$!<Home>!$_','value':{'street':'s','zip':'z'}},"
                           "{'label':'_$!<Work>!$_','value':{'city':'c'}},{'value':{'country':'x','countryCode':'y'}}],"
                           "'urls':[{'label':'own','value':'w'}],"
                           "'relatedNames':[{'label':'_$!<Father>!$_','value':'f'}]}")
                .record);
        const DisplayFields expected{
            {u("Home Address"), u("s,z")}, {u("Work Address"), u("x,y")}, {u("Father"), u("f")}};
        QCOMPARE(analysePerson(person), expected);
    }
};

QTEST_GUILESS_MAIN(PreviewTest)
#include "PreviewTest.moc"
