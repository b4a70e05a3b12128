// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "generator/ContactGenerator.h"
#include "generator/NameTables.h"

#include <QHash>
#include <QSet>
#include <QTest>

#include <algorithm>

/// The promises that load tests and benchmarks build on.
class ContactGeneratorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tablesKeepTheirRules();
    void sameSeedGivesSamePeople();
    void namesAreUniqueButForTheExpectedGroups();
};

void ContactGeneratorTest::tablesKeepTheirRules()
{
    QSet<QString> firsts;
    QSet<QString> lasts;
    QSet<QChar> initials;
    const auto add = [](QSet<QString> &all, const QString &name) {
        QVERIFY2(!all.contains(name), qPrintable(name));
        QVERIFY2(!name.contains(u'-') && !name.contains(u'(') && !name.contains(u' '), qPrintable(name));
        all.insert(name);
    };
    for (const Culture &culture : cultures()) {
        for (const NamePart &name : culture.firstNames)
            add(firsts, name.text);
        for (const NamePart &name : culture.lastNames) {
            add(lasts, name.text);
            initials.insert(name.text.front());
        }
    }
    for (const auto &names : {firsts, lasts}) {
        for (const QString &name : names) {
            for (qsizetype size = 1; size < name.size(); ++size)
                QVERIFY2(!(firsts.contains(name.left(size)) && initials.contains(name[size])), qPrintable(name));
        }
    }
}

void ContactGeneratorTest::sameSeedGivesSamePeople()
{
    ContactGenerator some(1500, 5);
    ContactGenerator more(3000, 5);
    for (StoredRecord contact = some.next(); contact.record; contact = some.next()) {
        const StoredRecord same = more.next();
        QCOMPARE(contact.uid, same.uid);
        QVERIFY(*contact.record == *same.record);
    }
}

void ContactGeneratorTest::namesAreUniqueButForTheExpectedGroups()
{
    ContactGenerator generator(20500, 5);
    QHash<QString, int> holders;
    for (StoredRecord contact = generator.next(); contact.record; contact = generator.next()) {
        QString key;
        for (const ABProperty property : {ABProperty::FirstName, ABProperty::LastName}) {
            const QString *name = contact.record->text(property);
            key += name ? *name : QStringLiteral("(null)");
        }
        ++holders[key];
    }
    const auto groups = std::count_if(holders.cbegin(), holders.cend(), [](int count) { return count > 1; });
    QCOMPARE(qint64(groups), generator.expected().of(Condition::DuplicateContacts));
}

QTEST_APPLESS_MAIN(ContactGeneratorTest)
#include "ContactGeneratorTest.moc"
