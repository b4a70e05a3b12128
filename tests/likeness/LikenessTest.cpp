// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "likeness/LikelyDuplicates.h"
#include "likeness/WordForms.h"
#include "support/TestPeople.h"

#include <QTest>

#include <algorithm>

/// Which contacts are taken for one person's, by examples.
class LikenessTest : public QObject
{
    Q_OBJECT

private:
    static std::vector<PersonSnapshot> peopleOf(const QByteArrayList &texts)
    {
        std::vector<PersonSnapshot> people;
        for (const QByteArray &text : texts) {
            const StoredRecord stored = recordFromText(text);
            people.push_back({std::make_shared<ABPerson>(stored.uid, stored.record), stored.record});
        }
        return people;
    }

    static LikelyDuplicates find(
        const std::vector<PersonSnapshot> &people, LikenessGrade upTo = LikenessGrade::Possible)
    {
        return findLikelyDuplicates(people, upTo, QStringLiteral("DE"), [](double) { return true; });
    }

    /// A group a line: the grade and the uids.
    static QString textOf(const LikelyDuplicates &found, const std::vector<PersonSnapshot> &people)
    {
        QStringList lines;
        for (const LikelyGroup &group : found.groups) {
            QStringList uids;
            for (const std::size_t member : group.members)
                uids += people[member].person->uniqueId();
            lines += QStringList{QStringLiteral("certain"), QStringLiteral("likely"),
                         QStringLiteral("possible")}[int(group.grade)]
                + u' ' + uids.join(u' ');
        }
        return lines.join(u'\n');
    }

private Q_SLOTS:
    void wordsAreComparedByTheirForms()
    {
        const auto form = [](const char *text) { return wordForms(QString::fromUtf8(text)); };
        for (const auto &[a, b] : {std::pair{"Müller", "MUELLER"}, std::pair{"Weiß", "weiss"},
                 std::pair{"Ødegård", "Odegaard"}, std::pair{"O’Brien", "OBrien"}, std::pair{"Łukasz", "Lukasz"},
                 std::pair{"Иван", "Ivan"}, std::pair{"Sophie", "Sofie"}, std::pair{"山田", "shāntián"}})
            QCOMPARE(form(a), form(b));
        QVERIFY(form("Peter") != form("Petra"));
        QCOMPARE(typingErrors("martha", "marhta"), 1);
    }

    void pairIsOfGrade_data()
    {
        QTest::addColumn<QByteArray>("one");
        QTest::addColumn<QByteArray>("two");
        QTest::addColumn<QString>("grade");
        const auto row = [](const char *name, const char *one, const char *two, const char *grade) {
            QTest::newRow(name) << QByteArray(one) << QByteArray(two) << QString::fromLatin1(grade);
        };
        // One person.
        row("nickname, order, number", "'firstName':'Bob','lastName':'Müller','phone':[{'value':'+49 170 1234567'}]",
            "'lastName':'MUELLER, Robert','phone':[{'value':'0170 1234567'}]", "certain");
        row("e-mail only", "'firstName':'Ann','lastName':'Lee','email':[{'value':'ann@lee.example'}]",
            "'email':[{'value':'Ann+news@LEE.example'}]", "likely");
        row("birthday, title, swapped", "'firstName':'Dr. Paco','lastName':'Ruiz','birthday':'1970-05-06'",
            "'firstName':'Ruiz','lastName':'Francisco','birthday':'1970-05-06'", "certain");
        row("address, typing error",
            "'firstName':'Sepp','lastName':'Hinterhuber','address':[{'value':{'street':'Hauptstr. "
            "5','city':'Linz'}}]",
            "'firstName':'Josef','lastName':'Hinterhubre','address':[{'value':{'street':'Hauptstraße "
            "5','city':'LINZ'}}]",
            "likely");
        row("account", "'firstName':'Ann','instantMessage':[{'value':{'service':'SkypeInstant','username':'annl'}}]",
            "'lastName':'Lee','instantMessage':[{'value':{'service':'skype','username':'AnnL'}}]", "likely");
        row("picture and name", "'firstName':'Ann','lastName':'Lee','image':'iVBORw0KGgo='",
            "'firstName':'Anne','lastName':'Lee','image':'iVBORw0KGgo='", "likely");
        row("company", "'organization':'Acme GmbH','phone':[{'value':'+49 30 901820'}]",
            "'organization':'ACME','phone':[{'value':'030 901820'}]", "likely");
        row("extension", "'firstName':'Ann','lastName':'Lee','phone':[{'value':'+1 212 555 0100 ext. 12'}]",
            "'firstName':'Ann','lastName':'Lee','phone':[{'value':'+1-212-555-0100 x12'}]", "certain");
        row("region of the address", "'firstName':'Ann','lastName':'Lee','phone':[{'value':'+41 44 668 18 00'}]",
            "'firstName':'Ann','lastName':'Lee','phone':[{'value':'044 668 18 00'}],'address':[{'value':{'country':'"
            "Schweiz'}}]",
            "likely");
        // More than one.
        row("father and son, suffixes",
            "'firstName':'John','lastName':'Smith','suffix':'Sr.','phone':[{'label':'_$!<Home>!$_','value':'+1 212 555 "
            "0199'}]",
            "'firstName':'John','lastName':'Smith Jr','phone':[{'label':'_$!<Home>!$_','value':'+1 212 555 0199'}]",
            "none");
        row("father and son, birthdays",
            "'firstName':'John','lastName':'Smith','birthday':'1950-01-02','address':[{'value':{'street':'1 "
            "Elm','city':'Ayr'}}]",
            "'firstName':'John','lastName':'Smith','birthday':'1980-11-23','address':[{'value':{'street':'1 "
            "Elm','city':'Ayr'}}]",
            "none");
        row("twins",
            "'firstName':'Eva','lastName':'Bauer','birthday':'1990-01-02','phone':[{'value':'+49 30 "
            "901820'}],'address':[{'value':{'street':'Am Markt 1','city':'Köln','zip':'50667'}}]",
            "'firstName':'Lena','lastName':'Bauer','birthday':'1990-01-02','phone':[{'value':'+49 30 "
            "901820'}],'address':[{'value':{'street':'Am Markt 1','city':'Köln','zip':'50667'}}]",
            "none");
        row("spouses with one e-mail address",
            "'firstName':'Paul','lastName':'Roy','email':[{'value':'roy@home.example'}],'phone':[{'value':'+49 30 "
            "901820'}]",
            "'firstName':'Paula','lastName':'Roy','email':[{'value':'roy@home.example'}],'phone':[{'value':'+49 30 "
            "901820'}]",
            "none");
        row("colleagues",
            "'firstName':'Ann','lastName':'Lee','organization':'Acme','phone':[{'value':'+49 30 "
            "901820'}],'email':[{'value':'info@acme.example'}]",
            "'firstName':'Ann','lastName':'Hill','organization':'Acme','phone':[{'value':'+49 30 "
            "901820'}],'email':[{'value':'info@acme.example'}]",
            "none");
        row("two desks", "'firstName':'Ann','lastName':'Lee','phone':[{'value':'+1 212 555 0100 ext. 12'}]",
            "'firstName':'Bo','lastName':'Lee','phone':[{'value':'+1 212 555 0100 ext. 13'}]", "none");
        row("a company and its clerk", "'organization':'Acme','phone':[{'value':'+49 30 901820'}]",
            "'firstName':'Ann','lastName':'Lee','organization':'Acme','phone':[{'value':'+49 30 901820'}]", "none");
        row("namesakes", "'firstName':'Maria','lastName':'Garcia','phone':[{'value':'+34 912 345 678'}]",
            "'firstName':'Maria','lastName':'Garcia','phone':[{'value':'+34 934 567 890'}]", "none possible");
    }
    void pairIsOfGrade()
    {
        QFETCH(QByteArray, one);
        QFETCH(QByteArray, two);
        QFETCH(QString, grade);
        const auto people = peopleOf({"{'uid':'a'," + one + '}', "{'uid':'b'," + two + '}'});
        const QString found = textOf(find(people), people);
        const QString got = found.isEmpty() ? QStringLiteral("none") : found.section(u' ', 0, 0);
        QVERIFY2(grade.split(u' ').contains(got), qPrintable(got));
    }

    void groupsDoNotDependOnTheOrder()
    {
        // A father, his son, and a contact that could be either's.
        QByteArrayList texts{
            "{'uid':'c','firstName':'Jo','lastName':'Ray','suffix':'Sr','email':[{'value':'jo@ray.example'}]}",
            "{'uid':'b','firstName':'Jo','lastName':'Ray','email':[{'value':'jo@ray.example'}]}",
            "{'uid':'a','firstName':'Jo','lastName':'Ray','suffix':'Jr','email':[{'value':'jo@ray.example'}]}",
            "{'uid':'e','firstName':'Bill','lastName':'Poe','phone':[{'value':'+49 170 7654321'}]}",
            "{'uid':'d','firstName':'William','lastName':'Poe','phone':[{'value':'0049 1707654321'}]}"};
        const auto people = peopleOf(texts);
        const QString found = textOf(find(people), people);
        QVERIFY2(found.contains(QStringLiteral("certain e d")), qPrintable(found));
        QVERIFY2(!found.contains(QStringLiteral("c b a")), qPrintable(found));
        std::ranges::reverse(texts);
        const auto reversed = peopleOf(texts);
        const auto asSets = [](const QString &text) {
            QStringList lines = text.split(u'\n');
            for (QString &line : lines) {
                QStringList words = line.split(u' ');
                words.sort();
                line = words.join(u' ');
            }
            lines.sort();
            return lines;
        };
        QCOMPARE(asSets(textOf(find(reversed), reversed)), asSets(found));
    }

    void switchboardIsNotComparedInFull()
    {
        QByteArrayList texts;
        for (int i = 0; i < 60; ++i) {
            const QByteArray number = QByteArray::number(i);
            texts += "{'uid':'" + number + "','firstName':'B" + number + "','phone':[{'value':'+49 30 901820'}]}";
        }
        const auto people = peopleOf(texts);
        const LikelyDuplicates found = find(people);
        QCOMPARE(found.crowded, 60);
        QVERIFY(found.groups.empty());
    }

    void canBeCancelled()
    {
        const auto people = peopleOf({"{'uid':'a','firstName':'Ann','lastName':'Lee','birthday':'1970-05-06'}",
            "{'uid':'b','firstName':'Ann','lastName':'Lee','birthday':'1970-05-06'}"});
        const auto found = findLikelyDuplicates(people, LikenessGrade::Likely, {}, [](double) { return false; });
        QVERIFY(found.isCancelled);
        QVERIFY(found.groups.empty());
    }
};

QTEST_APPLESS_MAIN(LikenessTest)
#include "LikenessTest.moc"
