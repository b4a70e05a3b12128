// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/ExportContact.h"
#include "support/HardContacts.h"
#include "support/LogCapture.h"
#include "support/TableDelegate.h"
#include "support/TestFolder.h"
#include "support/TestPeople.h"
#include "table/grid/LoadContactsViewController.h"

#include <mutex>

namespace {

class Panel : public ExportPanel
{
public:
    std::optional<ExportChoice> choice;
    void beginSheet(std::function<void(const std::optional<ExportChoice> &)> done) override { done(choice); }
};

} // namespace

/// From the contact table to the files: formats, scopes, threads.
class ExportContactTest : public QObject, private TestFolder
{
    Q_OBJECT

private:
    TableDelegate m_delegate;
    Panel m_panel;
    std::unique_ptr<LoadContactsViewController> m_controller;
    std::unique_ptr<ExportContact> m_exporter;
    std::vector<ExportOutcome> m_outcomes;
    std::mutex m_mutex; // guards the outcomes, which come on the threads of the exports

    /// As the button for all people does.
    void exportEverybody(const ExportChoice &choice)
    {
        m_panel.choice = choice;
        m_exporter->setLoadContactsViewController(m_controller.get());
        m_exporter->setExportArray(m_controller->getTableViewDataArray());
        m_exporter->setIsExportAllPeople(true);
        m_exporter->startExport();
    }

private Q_SLOTS:
    void init()
    {
        const auto book = sharedBookOf(
            {"{'uid':'1','firstName':'Ann','lastName':'Lee','phone':[{'label':'_$!<Mobile>!$_','value':'1'}]}",
                "{'uid':'2','lastName':'Ode','birthday':'2001-02-03'}", "{'uid':'3','firstName':'Cy','note':'n'}"});
        m_outcomes.clear();
        m_controller = std::make_unique<LoadContactsViewController>(m_delegate);
        m_controller->updateTableView(LoadContactsViewController::loadPeople(book));
        m_controller->getTableView()->setColumns({Field::Birthday, Field::LastName, Field::FirstName});
        m_exporter = std::make_unique<ExportContact>(m_panel);
        m_delegate.exporter = m_exporter.get();
        connect(
            m_exporter.get(), &ExportContact::exportFinished, this,
            [this](const ExportOutcome &outcome) {
                const std::scoped_lock lock(m_mutex);
                m_outcomes.push_back(outcome);
            },
            Qt::DirectConnection);
    }

    void everyFormatWritesItsFile_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("all");
        QTest::addColumn<QString>("table");
        for (const auto &[kind, extension] : {std::pair("Excel", "xlsx"), std::pair("HTML", "html"),
                 std::pair("Pages", "pages"), std::pair("Numbers", "numbers"), std::pair("Docx", "docx")})
            QTest::newRow(kind) << u("Save to ") + u(kind) << u("Multi-Contacts.") + u(extension)
                                << u("Multi-Contacts(0).") + u(extension);
        QTest::newRow("csv") << u("Save to CSV") << u("Multi-Contacts.csv") << u("allPeople.csv");
        QTest::newRow("vcard") << u("Save to vCard") << u("export_2.vcf") << u("export_2.vcf");
        QTest::newRow("txt") << u("Save to TXT") << u("Multi-Contacts.txt") << u("allPeople.txt");
    }
    void everyFormatWritesItsFile()
    {
        QFETCH(QString, title);
        const QString folder = freshFolder();
        const LogCapture log;
        for (const int tag : {ExportContact::kAllFieldsTag, ExportContact::kTableFieldsTag}) {
            exportEverybody({folder, title, tag});
            m_exporter->waitForFinished();
        }
        QCOMPARE(m_outcomes.size(), 2U);
        QCOMPARE(m_outcomes[0].format, title);
        QCOMPARE(m_outcomes[0].rows, 3);
        QVERIFY(!m_outcomes[0].report.error && !m_outcomes[1].report.error);
        QFETCH(QString, all);
        QFETCH(QString, table);
        QCOMPARE(m_outcomes[0].report.paths.last(), folder + u'/' + all);
        QCOMPARE(m_outcomes[1].report.paths.last(), folder + u'/' + table);
        const QString line = log.of(u("peoplenook.export")).value(0);
        QVERIFY2(
            line.startsWith(title + u(": ")) && line.contains(folder) && line.contains(u("3 rows")), qPrintable(line));
        // The shown fields, for two formats.
        const bool tells = title == u("Save to Excel") || title == u("Save to Numbers");
        const QString rows =
            u("Last Name = Lee; First Name = Ann\nBirthday = 2001-02-03; Last Name = Ode\nFirst Name = Cy");
        QCOMPARE(log.of(u("peoplenook.export")).count(rows), tells ? 1 : 0);
    }

    void shownFieldsAreCopiedInTheColumnsOrderAndSelectionsFromTheBottom()
    {
        const QString folder = freshFolder();
        exportEverybody({folder, u("Save to CSV"), ExportContact::kTableFieldsTag});
        m_exporter->waitForFinished();
        QCOMPARE(contentOf(folder + u("/allPeople.csv")),
            QByteArray("Last Name,First Name,Birthday,\nLee,Ann,     ,\nOde,     ,2001-02-03,\n     ,Cy,     ,\n"));
        for (const PersonRow &row : m_exporter->copyDictionaryDataSoucre())
            QVERIFY(!row->person() && !row->contains(Field::FullName));
        m_controller->exportItem({0, 2});
        m_exporter->waitForFinished();
        QCOMPARE(
            contentOf(folder + u("/allPeople(0).csv")), QByteArray("First Name,Last Name,\nCy,     ,\nAnn,Lee,\n"));
        for (const PersonRow &row : m_exporter->exportArray())
            QVERIFY(!row->person());
    }

    void choicesThatExportNothing()
    {
        const QString folder = freshFolder();
        for (const auto &[title, tag] :
            {std::pair("", 1), {"save to CSV", 1}, {"Save to CSV", 0}, {"Save to Excel", 3}})
            exportEverybody({folder, u(title), tag});
        m_panel.choice.reset(); // given up
        m_exporter->startExport();
        m_exporter->waitForFinished();
        QCOMPARE(namesIn(folder), QStringList());
    }

    void exportsAtTheSameTimeGoOnWithTheirOwnRows()
    {
        const QString folder = freshFolder();
        constexpr int kExports = 16;
        for (int i = 0; i < kExports; ++i) {
            exportEverybody({folder, u("Save to TXT"), ExportContact::kTableFieldsTag});
            // What happens to the table then is none of the export's business.
            m_controller->getTableView()->setColumns({Field::Note});
            m_controller->updateTableView({});
            m_controller->updateTableView(LoadContactsViewController::loadPeople(ABAddressBook::sharedAddressBook()));
            m_controller->getTableView()->setColumns({Field::Birthday, Field::LastName, Field::FirstName});
        }
        m_exporter.reset(); // waits
        QCOMPARE(m_outcomes.size(), std::size_t(kExports));
        const QStringList names = namesIn(folder);
        QCOMPARE(names.size(), kExports);
        for (const QString &name : names)
            QCOMPARE(contentOf(folder + u'/' + name), contentOf(folder + u("/allPeople.txt")));
        QCOMPARE(contentOf(folder + u("/allPeople.txt")).count('\n'), 4);
    }

    void failuresAreTold()
    {
        const LogCapture log;
        exportEverybody({freshFolder() + u("/missing"), u("Save to HTML"), ExportContact::kAllFieldsTag});
        m_exporter->waitForFinished();
        QVERIFY(m_outcomes.at(0).report.error && m_outcomes[0].report.paths.isEmpty());
        const QStringList lines = log.of(u("peoplenook.export"));
        QVERIFY2(lines.join(u' ').contains(u("Multi-Contacts.html: cannot be written: No such file")),
            qPrintable(lines.join(u'\n')));
    }
};

QTEST_GUILESS_MAIN(ExportContactTest)
#include "ExportContactTest.moc"
