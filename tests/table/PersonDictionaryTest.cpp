// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/fields/PersonDictionary.h"
#include "support/TestPeople.h"

#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;

class PersonDictionaryTest : public QObject
{
    Q_OBJECT

private:
    static QString textOf(const PersonDictionary &dictionary)
    {
        QStringList lines;
        for (const auto &entry : dictionary.entries())
            lines += fieldInfo(entry.field()).label + u'=' + dictionary.text(entry.field());
        return lines.join(u'|');
    }

private Q_SLOTS:
    void fieldsHaveDifferentLabels()
    {
        QSet<QString> labels;
        for (const FieldInfo &info : allFields()) {
            labels.insert(info.label);
            QCOMPARE(fieldLabelled(info.label), std::optional(info.field));
        }
        QCOMPARE(labels.size(), kFieldCount);
        QCOMPARE(fieldInfo(Field::Father).label, u"Father"_s);
        QCOMPARE(fieldInfo(Field::HomeAim).label, u"Home AIM"_s);
        QVERIFY(!fieldLabelled(u"home city"));
    }

    void fieldsOfPeople_data() { addBlocks(u"tests/data/table/people.txt"_s); }
    void fieldsOfPeople()
    {
        QFETCH(const QStringList, lines);
        const auto [uid, values] = recordFromText(lines.at(1).toUtf8());
        const auto person = std::make_shared<ABPerson>(u"1"_s, values);
        const PersonDictionary dictionary = prasePerson(person, DictionaryForm::Table);
        QCOMPARE(textOf(dictionary), lines.at(2));
        QCOMPARE(dictionary.person(), person);

        const PersonDictionary merge = prasePerson(person, DictionaryForm::Merge);
        QVERIFY(!merge.contains(Field::FullName) && !merge.contains(Field::Preffix));
    }

    void changedCopiesAreIndependent()
    {
        const auto person =
            std::make_shared<ABPerson>(u"1"_s, recordFromText("{'firstName':'A','birthday':'1604-02-03'}").record);
        PersonDictionary changed = prasePerson(person, DictionaryForm::Table);
        {
            PersonDictionary original = changed;
            changed.setValue(u"B"_s, Field::FirstName);
            changed.setValue(QDate(1990, 1, 2), Field::Birthday);
            changed.setValue(u"N"_s, Field::Note);
            QCOMPARE(textOf(original), u"First Name=A|Birthday=1604-02-03|FullName=A(null)"_s);
            original = changed;
            changed.setValue({}, Field::Note);
            QVERIFY(original.contains(Field::Note));
        }
        person->setValue(u"C"_s, kABFirstNameProperty); // no dictionary follows its person
        QCOMPARE(textOf(changed), u"First Name=B|Birthday=1990-01-02|FullName=A(null)"_s);
        QVERIFY(changed.text(Field::Note).isNull());
    }
};

QTEST_APPLESS_MAIN(PersonDictionaryTest)
#include "PersonDictionaryTest.moc"
