// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "likeness/LikelyDuplicates.h"
#include "likeness/Words.h"
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
        Vocabulary words;
        const auto numbers = [&](const char *text) { return words.numbers(QString::fromUtf8(text)); };
        for (const auto &[a, b] : {std::pair{"Müller", "MUELLER"}, std::pair{"Weiß", "weiss"},
                 std::pair{"Ødegård", "Odegaard"}, std::pair{"O’Brien", "OBrien"}, std::pair{"Łukasz", "Lukasz"},
                 std::pair{"Иван", "Ivan"}, std::pair{"Sophie", "Sofie"}, std::pair{"山田", "shāntián"}})
            QCOMPARE(numbers(a), numbers(b));
        QVERIFY(numbers("Peter") != numbers("Petra"));
        QCOMPARE(typingErrors("martha", "marhta"), 1);
        QCOMPARE(typingErrors("kitten", "sitting"), 3);
    }

    void pairIsOfGrade_data() { addBlocks(QStringLiteral("tests/data/likeness/pairs.txt")); }
    void pairIsOfGrade()
    {
        QFETCH(QStringList, lines);
        QByteArrayList texts;
        for (const QString &line : lines.mid(2))
            texts += line.toUtf8().replace(0, 1, QByteArray("{'uid':'") + char('a' + texts.size()) + "',");
        const auto people = peopleOf(texts);
        QString grade = QStringLiteral("none");
        const QStringList groups = textOf(find(people), people).split(u'\n');
        for (qsizetype i = 0; i < groups.size() && grade == QLatin1String("none"); ++i) {
            if (groups[i].contains(QLatin1String(" a b")))
                grade = groups[i].section(u' ', 0, 0);
        }
        const bool isUnlikely = grade == QLatin1String("none") || grade == QLatin1String("possible");
        QVERIFY2(lines[1] == QLatin1String("unlikely") ? isUnlikely : grade == lines[1], qPrintable(grade));
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

    void thirdContactJoinsTwoSpellings()
    {
        const QByteArray rest = "'lastName':'Poe','email':[{'value':'poe@ray.example'}]}";
        const auto people = peopleOf({"{'uid':'a','firstName':'Bob'," + rest, "{'uid':'b','firstName':'Robert'," + rest,
            "{'uid':'c','firstName':'Robetr'," + rest});
        QCOMPARE(textOf(find(people), people), QStringLiteral("likely a b c"));
        const auto spouses = peopleOf({"{'uid':'a','firstName':'Paul'," + rest, "{'uid':'b'," + rest,
            "{'uid':'c','firstName':'Rosalind'," + rest});
        QVERIFY(!textOf(find(spouses), spouses).contains(QStringLiteral("a b c")));
    }

    void namesakesInOneTownAreTwo()
    {
        QByteArrayList texts{
            "{'firstName':'Lars','lastName':'Berg','address':[{'value':{'street':'9 Elm','city':'Ayr'}}]}",
            "{'firstName':'Lars','lastName':'Berg','address':[{'value':{'street':'3 Mill Road','city':'Ayr'}}]}"};
        for (int i = 0; i < 1200; ++i) { // in a book of many duplicates less is asked for
            const QByteArray number = QByteArray::number(1000 + i / 2);
            texts +=
                "{'firstName':'Ann','lastName':'Lee" + number + "','email':[{'value':'" + number + "@home.example'}]}";
        }
        const LikelyDuplicates found = find(peopleOf(texts), LikenessGrade::Likely);
        QCOMPARE(found.groups.size(), 600U);
        QVERIFY(found.groups.front().members.front() > 1);
    }

    void switchboardIsNotComparedInFull()
    {
        QByteArrayList texts;
        for (int i = 0; i < 60; ++i) {
            const QByteArray number = QByteArray::number(i);
            texts += "{'uid':'" + number + "','firstName':'Ann','lastName':'B" + number
                + "','phone':[{'value':'+49 30 901820'}]}";
        }
        const auto people = peopleOf(texts);
        const LikelyDuplicates found = find(people);
        QCOMPARE(found.crowded, 60);
        QVERIFY(found.groups.empty());
    }

    void canBeCancelledInEveryPhase()
    {
        QByteArrayList texts;
        for (int i = 0; i < 200; ++i) {
            const QByteArray number = QByteArray::number(i / 2);
            texts += "{'uid':'" + QByteArray::number(i) + "','firstName':'Ann','lastName':'Lee" + number
                + "','phone':[{'value':'+49 170 12345" + number.rightJustified(2, '0') + "'}]}";
        }
        const auto people = peopleOf(texts);
        double told = -1;
        const auto notBefore = [&](double done) {
            const bool isInOrder = told <= done && done <= 1;
            told = done;
            return isInOrder;
        };
        QCOMPARE(findLikelyDuplicates(people, LikenessGrade::Likely, {}, notBefore).groups.size(), 100U);
        QVERIFY(told > 0.99);
        for (const double phase : {0.0, 0.1, 0.3, 0.45, 0.55, 0.8}) {
            double last = 0;
            const auto found = findLikelyDuplicates(people, LikenessGrade::Likely, {}, [&](double done) {
                last = done;
                return done < phase;
            });
            QVERIFY(found.isCancelled);
            QVERIFY(found.groups.empty());
            QVERIFY2(last < phase + 0.1, qPrintable(QString::number(last)));
        }
    }
};

QTEST_APPLESS_MAIN(LikenessTest)
#include "LikenessTest.moc"
