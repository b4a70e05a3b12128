// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/model/ABLabels.h"
#include "contacts/model/ContentHash.h"
#include "support/TestPeople.h"

#include <QTest>

/// People and their values, apart from any store.
class RecordTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tablesAreInTheOrderOfTheirEnumerations()
    {
        for (const auto &info : allProperties())
            QCOMPARE(&propertyInfo(info.property), &info);
        for (const auto &property : allProperties()) {
            QCOMPARE(propertyNamed(QString(property.name)), property.property);
            for (const auto &key : keysOfProperty(property.property))
                QCOMPARE(&keyInfo(key.key), &key);
        }
        QCOMPARE(keysOfProperty(kABAddressProperty).size(), std::size_t(6));
        QCOMPARE(keysOfProperty(kABEmailProperty).size(), std::size_t(0));
        QCOMPARE(keyInfo(kABInstantMessageServiceKey).text, QLatin1StringView("InstantMessageService"));
        QCOMPARE(keyInfo(kABInstantMessageUsernameKey).text, QLatin1StringView("InstantMessageUsername"));
    }

    /// Uids of imported people and the proofs of the history rest on these: they must never change.
    void contentHashesStayAsTheyAre()
    {
        for (const QStringList &lines : blocksOf(QStringLiteral("tests/data/book/hashes.txt")))
            QCOMPARE(QString::fromLatin1(contentHash(*recordFromText(lines[1].toUtf8()).record).toHex()), lines[2]);
    }

    void absentAndEmptyDiffer()
    {
        ABPerson person(QStringLiteral("a"), recordFromText("{'note':'','email':[]}").record);
        for (const ABProperty property : {kABNoteProperty, kABEmailProperty}) {
            QVERIFY(!std::holds_alternative<std::monostate>(person.valueForProperty(property)));
            QVERIFY(*person.record() != PersonRecord());
            QVERIFY(person.removeValueForProperty(property));
            QVERIFY(std::holds_alternative<std::monostate>(person.valueForProperty(property)));
        }
        QCOMPARE(*person.record(), PersonRecord());
    }

    void valuesThatDoNotFitAreRefused()
    {
        const auto listOf = [](const ABMultiValue::Value &value, const QString &label) {
            ABMutableMultiValue list;
            list.addValue(value, label);
            return ABValue(list);
        };
        const QString half(QChar(0xD83D)); // of a character
        const ABValue text = QStringLiteral("text");
        const ABValue texts = listOf(QStringLiteral("x"), kABHomeLabel);
        const ABValue addresses = listOf(ABDictionary{{kABAddressCityKey, QStringLiteral("Ulm")}}, kABHomeLabel);
        const std::vector<std::pair<ABProperty, std::vector<ABValue>>> misfits{
            {kABNoteProperty, {QDate(2000, 1, 1), qint64(1), texts, addresses, half}},
            {kABBirthdayProperty, {text, qint64(1), texts, addresses, QDate(), QDate(10000, 1, 1)}},
            {kABPersonFlags, {text, QDate(2000, 1, 1), texts, addresses}},
            {kABEmailProperty, {text, QDate(2000, 1, 1), qint64(1), addresses, listOf(QStringLiteral("x"), half)}},
            {kABAddressProperty, {text, QDate(2000, 1, 1), qint64(1), texts}}, {kABSocialProfileProperty, {addresses}},
            {kABUIDProperty, {text}}};
        for (const auto &[property, values] : misfits) {
            for (const ABValue &value : values) {
                ABPerson person;
                Error error;
                QVERIFY2(!person.setValue(value, property, &error), propertyInfo(property).name.data());
                QCOMPARE(error.kind, ErrorKind::Invalid);
                QVERIFY(error.text.startsWith(propertyInfo(property).name));
                QCOMPARE(*person.record(), PersonRecord());
            }
        }
    }

    void valueForKeyReadsByName()
    {
        const auto stored = recordFromText("{'uid':'a','phone':[{'label':'Boat','value':'1'}]}");
        const ABPerson person(stored.uid, stored.record);
        QVERIFY(person.valueForKey(u"phone") == person.valueForProperty(kABPhoneProperty));
        QVERIFY(person.valueForKey(u"uid") == ABValue(QStringLiteral("a")));
        QVERIFY(person.valueForKey(u"fax") == ABValue());
    }

    void multiValuesKeepOrderLabelsAndRepetitions()
    {
        ABMutableMultiValue building;
        building.addValue(QStringLiteral("1"), kABHomeLabel);
        const ABMultiValue early = building;
        building.addValue(QStringLiteral("1"), kABHomeLabel);
        building.addValue(QStringLiteral("1"), QString());
        building.addValue(QStringLiteral("1"), QStringLiteral(""));
        QCOMPARE(early.count(), 1);
        QCOMPARE(building.count(), 4);
        QVERIFY(building.labelAtIndex(2).isNull());
        QVERIFY(!building.labelAtIndex(3).isNull());
        QVERIFY(building.entries()[2] != building.entries()[3]);
        QVERIFY(building.entries()[0] == building.entries()[1]);
    }

    void dictionariesCompareByPartsWhateverTheOrderOfSetting()
    {
        ABDictionary a{{kABAddressCityKey, QStringLiteral("Ulm")}, {kABAddressStreetKey, QStringLiteral("Weg 1")}};
        ABDictionary b{{kABAddressStreetKey, QStringLiteral("Weg 1")}, {kABAddressCityKey, QStringLiteral("Ulm")}};
        QCOMPARE(a, b);
        b.setValue(QStringLiteral(""), kABAddressZIPKey);
        QVERIFY(a != b);
        QVERIFY(!a.valueForKey(kABAddressZIPKey));
        QCOMPARE(*b.valueForKey(kABAddressZIPKey), QString());
    }

    void changesMoveToAnotherBasePropertyByProperty()
    {
        const auto before = recordFromText("{'firstName':'A','note':'n','email':[{'value':'a@x.com'}]}").record;
        const auto mine = recordFromText("{'firstName':'B','email':[{'value':'a@x.com'}]}").record;
        const auto theirs = recordFromText("{'firstName':'A','note':'n2','email':[],'flags':1}").record;
        const auto expected = recordFromText("{'firstName':'B','email':[],'flags':1}").record;
        QCOMPARE(withChanges(*theirs, *before, *mine), *expected);
        QCOMPARE(withChanges(*theirs, *before, *before), *theirs);
    }

    void searchingComparesExactly()
    {
        const auto book = sharedBookOf({"{'uid':'a','email':[{'value':'x@y.com'},{'value':'x@y.com'}]}",
            "{'uid':'b','email':[{'label':'Boat','value':'x@y.com'}]}", "{'uid':'c','email':[{'value':'X@y.com'}]}",
            "{'uid':'d'}"});
        const auto search = [&book](const std::optional<QString> &label, const std::optional<QString> &key,
                                int comparison) {
            return uidsOf(book->recordsMatchingSearchElement(ABPerson::searchElementForProperty(
                kABEmailProperty, label, key, QStringLiteral("x@y.com"), comparison)));
        };
        QCOMPARE(search({}, {}, kABEqual), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
        QCOMPARE(search(QStringLiteral("Boat"), {}, kABEqual), QStringList({QStringLiteral("b")}));
        QCOMPARE(search({}, {}, 1), QStringList());
        QCOMPARE(search({}, QStringLiteral("key"), kABEqual), QStringList());
    }
};

QTEST_APPLESS_MAIN(RecordTest)
#include "RecordTest.moc"
