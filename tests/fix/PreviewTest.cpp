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

    /// A field a line: x, y and width; B or R and the alpha in percent where it has a colour; the text in bars.
    static QString linesOf(const PreviewDocument &document)
    {
        QString lines;
        for (const auto &[frame, text, colour] : document.fields) {
            lines += u("%1 %2 %3 ").arg(frame.x()).arg(frame.y()).arg(frame.width());
            if (colour)
                lines += (colour->ink == PreviewColour::Ink::Red ? u("R%1 ") : u("B%1 ")).arg(colour->alpha * 100);
            lines += u'|' + text + u("|\n");
            if (frame.height() != 17)
                lines += u("a wrong height\n");
        }
        return lines;
    }

    static QString preview(Condition condition, QLatin1StringView title, const QByteArray &person,
        const QList<QByteArray> &others = {}, const QString &label = {})
    {
        Finding finding{condition, std::make_shared<ABPerson>(u("p"), recordFromText(person).record), {}, label};
        for (const QByteArray &other : others)
            finding.duplicateEmailArray += std::make_shared<ABPerson>(u("o"), recordFromText(other).record);
        const PersonRecordPtr before = finding.person->record();
        const QString lines = linesOf(FixPreview(finding).creatScrollerViewWithTitle(title));
        return finding.person->record() == before ? lines : u("the person was changed");
    }

private Q_SLOTS:
    void nameCards()
    {
        QCOMPARE(preview(Condition::UnusualSuffix, kRemoveTheSuffix, "{'firstName':'A','lastName':'L','suffix':'Jr.'}"),
            u("14 152 110 B30 |Before Fixing|\n"
              "14 132 70 B50 |Type :|\n84 132 210 |person|\n14 112 210 B50 |Title : |\n"
              "14 92 70 B50 |First :|\n84 92 210 |A|\n14 72 210 B50 |Middle : |\n"
              "14 52 70 B50 |Last : |\n84 52 210 |L|\n14 32 70 B50 |Suffix :|\n84 32 210 |Jr.|\n"
              "14 12 210 B50 |Org name:|\n"
              "230 152 110 B40 |After Fixing|\n"
              "230 132 70 B50 |Type :|\n300 132 210 |person|\n230 112 210 B50 |Title : |\n"
              "230 92 70 B50 |First :|\n300 92 210 |A|\n230 72 210 B50 |Middle : |\n"
              "230 52 70 B50 |Last :|\n300 52 210 |L|\n230 32 210 B50 |Suffix : |\n"
              "230 12 210 B50 |Org name : |\n"));
    }

    void nameCardsShowTheRepair_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QByteArray>("person");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("title") << QString(kRemoveTheTitle) << QByteArray("{'title':'Dr.','organization':'O'}")
                               << QStringList({u("84 112 210 |Dr.|"), u("230 112 210 B50 |Title : |"),
                                      u("14 12 70 B50 |Org name :|"), u("14 152 110 B40 |Before Fixing|")});
        QTest::newRow("no title") << QString(kRemoveTheTitle) << QByteArray("{}")
                                  << QStringList({u("14 112 210 B50 |Title : |"), u("230 112 210 B50 |Title : |"),
                                         u("14 12 210 B50 |Org name:|")});
        QTest::newRow("space") << QString(kRemoveTheSpace) << QByteArray("{'firstName':'A  b'}")
                               << QStringList({u("84 92 210 |A  b|"), u("300 92 210 |Ab|")});
        QTest::newRow("hyphen") << QString(kHyphenateFirstName) << QByteArray("{'firstName':'A  b'}")
                                << QStringList({u("300 92 210 |A--b|"), u("14 12 210 B50 |Org name : |")});
        QTest::newRow("missing") << QString(kUseQuestionMarks) << QByteArray("{'lastName':''}")
                                 << QStringList(
                                        {u("14 92 210 B50 |First : |"), u("300 92 210 |???|"), u("300 52 210 ||")});
        QTest::newRow("company") << QString(kConvertToCompany) << QByteArray("{}")
                                 << QStringList({u("84 132 210 |person|"), u("300 132 210 |company|")});
    }
    void nameCardsShowTheRepair()
    {
        QFETCH(QString, title);
        QFETCH(QByteArray, person);
        QFETCH(QStringList, lines);
        const QString card = preview(Condition::SingleName, QLatin1StringView(title.toLatin1()), person);
        for (const QString &line : lines)
            QVERIFY2(card.split(u'\n').contains(line), qPrintable(line + u'\n' + card));
    }

    void deletionShowsSixFields()
    {
        QCOMPARE(preview(Condition::SingleName, kDeleteThisContact,
                     "{'firstName':'A','phoneticFirstName':'a','department':'d','note':'n','birthday':'2001-02-03',"
                     "'nickname':'k','email':[{'value':'e'}],'phone':[{'label':'_$!<Mobile>!$_','value':'1'}]}"),
            u("14 152 310 R100 |the contact selected will be deleted:|\n"
              "14 132 100 B50 |Name :|\n114 132 210 |A|\n"
              "14 112 150 B50 |Phonetic First Name :|\n164 112 210 |a|\n"
              "14 92 100 B50 |Department :|\n114 92 210 |d|\n14 72 100 B50 |Note :|\n114 72 210 |n|\n"
              "14 52 100 B50 |Birthday :|\n114 52 210 |2001-02-03|\n14 32 100 B50 |Nickname :|\n114 32 210 |k|\n"
              "14 12 100 B50 |Other Email :|\n114 12 210 |e|\n"));
    }

    void sentences()
    {
        const auto shown = [](Condition condition, QLatin1StringView title) { return preview(condition, title, "{}"); };
        QCOMPARE(shown(Condition::DupPhone, kDeleteDuplicateProperty),
            u("14 152 310 |The duplicated phone numbers will be removed.|\n"));
        QCOMPARE(shown(Condition::EmptyNickname, kDeleteBlankProperty),
            u("14 152 310 |The empty nickname will be removed.|\n"));
        QVERIFY(shown(Condition::BlankName, kEditInContacts)
                    .endsWith(u("|This contact has no name.You can edit it in Contacts.|\n")));
        QVERIFY(shown(Condition::InvalidChar, kEditInContacts)
                    .endsWith(u("|This contact exsit invalid char. You can edit it in Contacts.|\n")));
        QVERIFY(shown(Condition::DuplicateContacts, kDeleteDuplicateContacts)
                    .endsWith(u("|The duplicate contact(s) will delete from contact.|\n")));
        QCOMPARE(shown(Condition::BlankName, kDeleteDuplicateProperty), QString());
    }

    void sharedAddresses()
    {
        const QByteArray person = "{'email':[{'label':'own','value':'x'},{'value':'y'}]}";
        QCOMPARE(preview(Condition::ShareEmail, kRemoveEmail, person),
            u("14 138 380 R100 |The Email Address \"y\" will be deleted |\n14 118 380 R100 |form this contact|\n"));
        const QList<QByteArray> four(4, "{'firstName':'B'}");
        const QString row = u("14 %1 310 R100 |B (null)|\n");
        const QString names = row.arg(138) + row.arg(118) + row.arg(98) + row.arg(78);
        QCOMPARE(preview(Condition::ShareEmail, kDeleteDuplicateContacts, person, four),
            names + u("14 58 310 R100 |will be deleted from Contacts|\n"));
        QCOMPARE(preview(Condition::ShareEmail, kDeleteDuplicateContacts, person, four + four),
            names + row.arg(58) + u("14 38 310 R100 | and others will be deleted from Contacts|\n"));
        const QString merge = preview(Condition::ShareEmail, kMergeContacts, "{'firstName':'A','jobTitle':'j'}", four);
        QCOMPARE(merge,
            u("14 152 450 |The duplicate contacts will be merged into one person.|\n"
              "14 132 100 B50 |Name :|\n114 132 210 |A|\n14 112 100 B50 |Note :|\n114 112 210 ||\n"
              "14 92 100 B50 |Job Title :|\n114 92 210 |j|\n14 72 100 B50 |Home Address :|\n114 72 210 ||\n"
              "14 52 100 B50 |Work Address :|\n114 52 210 ||\n"));
    }

    void namesakesAreLookedUpInTheAddressBook()
    {
        const auto book = sharedBookOf({"{'uid':'a','firstName':'A','suffix':'x'}", "{'uid':'b','firstName':'B'}",
            "{'uid':'c','firstName':'A','suffix':'y'}"});
        const auto linesFor = [&](const char *uid) {
            const Finding finding{Condition::DuplicateContacts, book->personWithUniqueId(u(uid)), {}, {}};
            return linesOf(FixPreview(finding).creatScrollerViewWithTitle(kMergeContacts));
        };
        QVERIFY(linesFor("a").contains(u("|y|\n")) && linesFor("c").contains(u("|y|\n")));
        QCOMPARE(linesFor("b").count(u'\n'), 1);
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
