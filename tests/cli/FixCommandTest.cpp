// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/CommandRun.h"

#include <QProcess>
#include <QTest>

/// Repairs and previews from the command line, run in process on buffers.
class FixCommandTest : public QObject, private CommandFolder
{
    Q_OBJECT

private:
    QByteArray m_book;
    int m_books = 0;

    CommandRun run(
        const std::vector<std::string> &arguments, const std::string &input = {}, bool terminal = false) const
    {
        return runOn(m_book, arguments, input, terminal);
    }

    CommandRun fix(const char *group, const char *option, std::vector<std::string> rest, const std::string &input = {},
        bool terminal = false) const
    {
        rest.insert(rest.begin(), {"fix", "--group", group, "--option", option});
        return run(rest, input, terminal);
    }

    void import(const std::string &people)
    {
        m_book.setNum(++m_books);
        QCOMPARE(run({"import", "-"}, people).status, 0);
    }

private Q_SLOTS:
    void wrongUsageNamesWhatThereIs()
    {
        import("{\"uid\":\"a\",\"suffix\":\"x\"}\n");
        CommandRun outcome = fix("Unusual suffix", "Remove the suffix", {"a"});
        QCOMPARE(outcome.status, 2);
        QVERIFY(
            outcome.err.startsWith(u("--group: there is no group \"Unusual suffix\"; there are \"Unusual Suffix\"")));
        outcome = fix("Unusual Suffix", "Remove the title", {"a"});
        QCOMPARE(outcome.status, 2);
        QCOMPARE(outcome.err,
            u("--option: \"Unusual Suffix\" has no option \"Remove the title\"; it has \"Remove the suffix\","
              " \"Delete this contact\"\n"));
        QCOMPARE(fix("Unusual Suffix", "Remove the suffix", {}).status, 2);
        QCOMPARE(fix("Unusual Suffix", "Remove the suffix", {"--all", "a"}).status, 2);
        QCOMPARE(run({"preview", "--group", "Unusual Suffix", "a"}).status, 2);
        QVERIFY(run({"fix", "--help"}).out.contains(u("Use \"???\" instead of the empty name")));
    }

    void fixesThePeopleNamed()
    {
        import("{\"uid\":\"a\",\"suffix\":\"x\"}\n{\"uid\":\"b\",\"suffix\":\"y\"}\n{\"uid\":\"c\"}\n");
        const CommandRun outcome = fix("Unusual Suffix", "Remove the suffix", {"b", "c", "d", "b"});
        QCOMPARE(outcome.status, 1);
        QCOMPARE(outcome.out, u("b  (null) (null)  suffix: \"y\" -> nothing\n"));
        QCOMPARE(outcome.err, u("c: is not among the findings of \"Unusual Suffix\"\nd: no contact has this uid\n"));
        QCOMPARE(run({"people"}).out, u("{\"uid\":\"a\",\"suffix\":\"x\"}\n{\"uid\":\"b\"}\n{\"uid\":\"c\"}\n"));
    }

    void allOfAGroup()
    {
        // The first shares an address with the second and another with the third: two findings of one person.
        import("{\"uid\":\"a\",\"email\":[{\"value\":\"x\"},{\"value\":\"y\"}]}\n"
               "{\"uid\":\"b\",\"email\":[{\"value\":\"x\"}]}\n{\"uid\":\"c\",\"email\":[{\"value\":\"y\"}]}\n");
        CommandRun outcome = fix("Share Email address", "Delete the duplicate contact(s)", {"--all"});
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.out, u("a  (null) (null)  deleted b\na  (null) (null)  deleted c\n"));
        QCOMPARE(run({"people"}).out.count(u'\n'), 1);
        import("{\"uid\":\"a\",\"email\":[{\"value\":\"x\"},{\"value\":\"y\"}]}\n"
               "{\"uid\":\"b\",\"email\":[{\"value\":\"x\"}]}\n{\"uid\":\"c\",\"email\":[{\"value\":\"y\"}]}\n");
        outcome = fix("Share Email address", "Delete this contact", {"--all", "--yes"});
        QCOMPARE(outcome.out, u("a  (null) (null)  deleted a\n"));
        outcome = fix("Invalid Characters", "Edit in Contacts", {"--all"});
        QVERIFY(outcome.status == 0 && outcome.out.contains(u("b  (null) (null)  nothing changed; it is left")));
        // A finding whose contact was merged before is skipped.
        import("{\"uid\":\"a\",\"email\":[{\"value\":\"x\"},{\"value\":\"y\"}]}\n"
               "{\"uid\":\"b\",\"email\":[{\"value\":\"x\"}]}\n{\"uid\":\"c\",\"email\":[{\"value\":\"y\"}]}\n");
        outcome = fix("Share Email address", "Merge contacts", {"--all"});
        QCOMPARE(outcome.status, 0);
        QVERIFY(outcome.out.startsWith(u("a  (null) (null)  merged b a into ")));
        QVERIFY(outcome.out.endsWith(u("\na  (null) (null)  skipped: no longer in the address book\n")));
        QCOMPARE(run({"people"}).out.count(u'\n'), 2);
    }

    void deletionNeedsAnAnswer()
    {
        import("{\"uid\":\"a\"}\n");
        CommandRun outcome = fix("Blank Name", "Delete this contact", {"a"});
        QCOMPARE(outcome.status, 1);
        QVERIFY(outcome.out.isEmpty() && outcome.err.contains(u("--yes")));
        outcome = fix("Blank Name", "Delete this contact", {"a"}, "cancel\n", true);
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.out, u("a  (null) (null)  cancelled, nothing changed\n"));
        QCOMPARE(run({"people"}).out, u("{\"uid\":\"a\"}\n"));
        outcome = fix("Blank Name", "Delete this contact", {"a"}, "delete\n", true);
        QCOMPARE(outcome.out, u("a  (null) (null)  deleted a\n"));
        QCOMPARE(run({"people"}).out, QString());
    }

    void mergeSaysWhoBecameWhom()
    {
        import("{\"uid\":\"a\",\"firstName\":\"A\",\"lastName\":\"L\"}\n{\"uid\":\"b\",\"firstName\":\"A\","
               "\"lastName\":\"L\"}\n");
        const CommandRun outcome = fix("Duplicate contacts", "Merge contacts", {"--all"});
        QVERIFY(outcome.out.startsWith(u("a  A L  merged a b into ")));
        const QString people = run({"people"}).out;
        QVERIFY(people.contains(outcome.out.trimmed().section(u' ', -1)) && people.count(u'\n') == 1);
    }

    void failedSavesAreReported()
    {
        import("{\"uid\":\"a\",\"suffix\":\"x\"}\n{\"uid\":\"b\",\"suffix\":\"y\"}\n");
        QCOMPARE(run({"edit", "b", "Note", "n"}).status, 0);
        // The file can be read but takes no further change.
        QCOMPARE(QProcess::execute(u("sqlite3"),
                     {path(m_book), u("CREATE UNIQUE INDEX one ON history(action) WHERE action = 'changed'")}),
            0);
        const CommandRun outcome = fix("Unusual Suffix", "Remove the suffix", {"--all"});
        QCOMPARE(outcome.status, 1);
        QCOMPARE(outcome.out, QString());
        QVERIFY2(outcome.err.startsWith(u("a: not saved: ")) && outcome.err.count(u'\n') == 1, qPrintable(outcome.err));
    }

    void previewsStandInColumns()
    {
        import("{\"uid\":\"a\",\"firstName\":\"Ann B\",\"lastName\":\"L\\nee\"}\n");
        const auto preview = [this](const char *option) {
            return run({"preview", "--group", "Spacing in first name", "--option", option, "a"});
        };
        QCOMPARE(preview("Remove the space").out,
            u("Before Fixing          After Fixing\n"
              "Type :         person  Type :   person\n"
              "Title :                Title : \n"
              "First :        Ann B   First :  AnnB\n"
              "Middle :               Middle : \n"
              "Last :         L ee    Last :   L ee\n"
              "Suffix :               Suffix : \n"
              "Org name :             Org name : \n"));
        QCOMPARE(preview("Delete this contact").out, u("the contact selected will be deleted:\nName :  Ann B L ee\n"));
        QCOMPARE(run({"preview", "--group", "Blank Name", "--option", "Edit in Contacts", "a"}).status, 1);
        QCOMPARE(run({"people"}).out, u("{\"uid\":\"a\",\"firstName\":\"Ann B\",\"lastName\":\"L\\nee\"}\n"));
    }
};

QTEST_GUILESS_MAIN(FixCommandTest)
#include "FixCommandTest.moc"
