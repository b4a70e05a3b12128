// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/model/ABLabels.h"
#include "contacts/model/ContentHash.h"
#include "support/TestPeople.h"

#include <QTest>

#include <array>

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
    void contentHashesStayAsTheyAre_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QByteArray>("hash");
        const auto row = [](const char *name, const char *json, const char *hash) {
            QTest::newRow(name) << QByteArray(json) << QByteArray(hash);
        };
        row("nothing", "{}", "da39a3ee5e6b4b0d3255bfef95601890afd80709");
        row("texts", "{'firstName':'','lastName':'Ö','note':'n','birthday':'1604-02-29','flags':1}",
            "fa2db71cc7275714241c5e8ebfa07465f5767d13");
        row("lists", "{'email':[],'phone':[{'value':''},{'label':'','value':'1'}],'urls':[{'label':'a','value':'b'}]}",
            "689610fdd9b46b74abd831ece080f898b33e53e7");
        row("parts",
            "{'address':[{'value':{'street':'s','city':'c','state':'','zip':'z','country':'o','countryCode':'k'}}],"
            "'instantMessage':[{'value':{'service':'x','username':'y'}}],'socialProfile':[{'value':{}}]}",
            "1a073083266134d49413837be6be462ab377da4d");
        row("picture", "{'jobTitle':'j','relatedNames':[{'value':'r'}],'image':'AAECAw=='}",
            "d54ddf38f8855fe5348e367c2067655239e9a2ea");
    }
    void contentHashesStayAsTheyAre()
    {
        QFETCH(QByteArray, json);
        QFETCH(QByteArray, hash);
        QCOMPARE(contentHash(*recordFromText(json).record).toHex(), hash);
    }

    void absentAndEmptyDiffer_data()
    {
        QTest::addColumn<int>("property");
        QTest::addColumn<QByteArray>("empty");
        QTest::newRow("text") << int(kABNoteProperty) << QByteArray("{'note':''}");
        QTest::newRow("multi-value") << int(kABEmailProperty) << QByteArray("{'email':[]}");
    }
    void absentAndEmptyDiffer()
    {
        QFETCH(int, property);
        QFETCH(QByteArray, empty);
        const auto record = recordFromText(empty).record;
        ABPerson person(QStringLiteral("a"), record);
        const auto p = ABProperty(property);
        QVERIFY(!std::holds_alternative<std::monostate>(person.valueForProperty(p)));
        QVERIFY(*record != PersonRecord());
        QVERIFY(person.removeValueForProperty(p));
        QVERIFY(std::holds_alternative<std::monostate>(person.valueForProperty(p)));
        QCOMPARE(*person.record(), PersonRecord());
    }

    void valuesThatDoNotFitAreRefused_data()
    {
        QTest::addColumn<int>("property");
        QTest::addColumn<int>("sample");
        const std::array properties{
            kABNoteProperty, kABBirthdayProperty, kABPersonFlags, kABEmailProperty, kABAddressProperty};
        for (int property = 0; property < 5; ++property) {
            for (int sample = 0; sample < 5; ++sample) {
                if (sample != property)
                    QTest::addRow("%d into %d", sample, property)
                        << int(properties.at(std::size_t(property))) << sample;
            }
        }
        QTest::newRow("uid") << int(kABUIDProperty) << 0;
        QTest::newRow("no date") << int(kABBirthdayProperty) << 5;
        QTest::newRow("half a character") << int(kABNoteProperty) << 6;
        QTest::newRow("half a character in a label") << int(kABEmailProperty) << 7;
        QTest::newRow("dictionary of another property") << int(kABSocialProfileProperty) << 4;
        QTest::newRow("year 10000") << int(kABBirthdayProperty) << 8;
    }
    void valuesThatDoNotFitAreRefused()
    {
        ABMutableMultiValue texts;
        texts.addValue(QStringLiteral("x"), kABHomeLabel);
        ABMutableMultiValue dictionaries;
        dictionaries.addValue(ABDictionary{{kABAddressCityKey, QStringLiteral("Ulm")}}, kABHomeLabel);
        ABMutableMultiValue halfLabel;
        halfLabel.addValue(QStringLiteral("x"), QString(QChar(0xD83D)));
        const auto samples = std::to_array<ABValue>({QStringLiteral("text"), QDate(2000, 1, 1), qint64(1), texts,
            dictionaries, QDate(), QString(QChar(0xD83D)), halfLabel, QDate(10000, 1, 1)});
        QFETCH(int, property);
        QFETCH(int, sample);
        ABPerson person;
        Error error;
        QVERIFY(!person.setValue(samples.at(std::size_t(sample)), ABProperty(property), &error));
        QCOMPARE(error.kind, ErrorKind::Invalid);
        QVERIFY(error.text.startsWith(propertyInfo(ABProperty(property)).name));
        QCOMPARE(*person.record(), PersonRecord());
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
