// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/RecordJson.h"
#include "fix/MergeContacts.h"
#include "support/TestPeople.h"

#include <QTest>

/// What becomes of several people when they are made one.
class MergeTest : public QObject
{
    Q_OBJECT

private:
    static ABPersonPtr person(const QByteArray &json)
    {
        return std::make_shared<ABPerson>(QStringLiteral("uid"), recordFromText(json).record);
    }

private Q_SLOTS:
    void rules_data() { addBlocks(QStringLiteral("tests/data/fix/merges.txt")); }
    void rules()
    {
        QFETCH(QStringList, lines);
        QList<ABPersonPtr> people;
        for (const QString &line : lines.sliced(1, lines.size() - 2))
            people += person(line.toUtf8());
        QByteArray merged =
            QByteArray::fromStdString(recordToJson(QStringLiteral("m"), *mergeContacts(people)->record()));
        QByteArray expected = lines.back().mid(2).toUtf8();
        expected.replace("LISTS", "'email':[],'phone':[],'relatedNames':[]");
        expected.replace("ADDRESSES",
            "'address':[{'label':'_$!<Home>!$_','value':{}},{'label':'_$!<Work>!$_','value':{}},"
            "{'label':'_$!<Other>!$_','value':{}}]");
        QCOMPARE(merged.replace('"', '\''), QByteArray("{'uid':'m'," + expected + "}"));
    }

    void theResultIsNewAndTheSourcesStay()
    {
        const ABPersonPtr source = person("{'firstName':'A'}");
        const PersonRecordPtr before = source->record();
        QVERIFY(mergeContacts({source})->uniqueId() != source->uniqueId());
        QCOMPARE(source->record(), before);
    }
};

QTEST_GUILESS_MAIN(MergeTest)
#include "MergeTest.moc"
