// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/ABAddressBook.h"
#include "contacts/open/OpenStore.h"
#include "fix/FixHandlers.h"
#include "scan/ScanAddressBook.h"
#include "support/Answers.h"
#include "support/PrivateDesktop.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

/// A book on a CardDAV server (Radicale), as the desktop has it: the whole way from the server through the daemon to a
/// repair, and back.
class CardDavTest : public QObject
{
    Q_OBJECT

private:
    PrivateDesktop m_desktop;
    QProcess m_server;
    quint16 m_port = 0;

    static QString u(const char *text) { return QString::fromLatin1(text); }

    QString fileOf(const char *path) const { return m_desktop.folder() + u("/server/") + u(path); }

    void write(const QString &path, const QByteArray &content) const
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }

    QByteArray cardOnServer() const
    {
        QFile file(fileOf("collection-root/club/book/p1.vcf"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void startServer()
    {
        QTcpServer free;
        QVERIFY(m_port != 0 || free.listen(QHostAddress::LocalHost));
        m_port = m_port == 0 ? free.serverPort() : m_port;
        free.close();
        const QString rights = fileOf("rights");
        write(rights, "[all]\nuser: .*\ncollection: .*\npermissions: RrWw\n");
        write(fileOf("config"),
            "[server]\nhosts = 127.0.0.1:" + QByteArray::number(m_port) + "\n[auth]\ntype = none\n[rights]\n"
                + "type = from_file\nfile = " + rights.toUtf8()
                + "\n[storage]\nfilesystem_folder = " + fileOf("").toUtf8() + "\n[web]\ntype = none\n");
        m_server.start(u("radicale"), {u("--config"), fileOf("config")});
        QTRY_VERIFY_WITH_TIMEOUT(isServing(), 20'000);
    }

    bool isServing() const
    {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, m_port);
        return socket.waitForConnected(200);
    }

private Q_SLOTS:
    void initTestCase()
    {
        if (!m_desktop.problem().isEmpty())
            QSKIP(qPrintable(m_desktop.problem()));
        if (QStandardPaths::findExecutable(u("radicale")).isEmpty())
            QSKIP("radicale is not installed");
        write(fileOf("collection-root/club/book/.Radicale.props"), R"({"tag": "VADDRESSBOOK"})");
        write(fileOf("collection-root/club/book/p1.vcf"),
            "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:p1\r\nFN:Ann Lee\r\nN:Lee;Ann;;;\r\nNOTE:  \r\nX-CLUB-NUMBER:42\r\n"
            "END:VCARD\r\n");
        startServer();
        write(m_desktop.folder() + u("/config/evolution/sources/club.source"),
            "[Data Source]\nDisplayName=Club\nEnabled=true\nParent=carddav-stub\n\n[Address Book]\n"
            "BackendName=carddav\n\n[Authentication]\nHost=127.0.0.1\nMethod=none\nPort="
                + QByteArray::number(m_port)
                + "\n\n[Security]\nMethod=none\n\n[WebDAV Backend]\nResourcePath=/club/book/\n\n[Offline]\n"
                  "StaySynchronized=true\n");
    }

    void cleanupTestCase()
    {
        ABAddressBook::setSharedAddressBook(nullptr);
        m_server.kill();
        m_server.waitForFinished();
    }

    void repairsWhatIsOnTheServer()
    {
        auto store = openStore(u("eds:club"));
        QVERIFY2(store, store ? "" : qPrintable(store.error().text));
        const auto book = *ABAddressBook::open(std::move(*store));
        // The daemon fetches the cards in its own time.
        QTRY_VERIFY_WITH_TIMEOUT(book->refresh() && book->personWithUniqueId(u("p1")), 20'000);
        ABAddressBook::setSharedAddressBook(book);

        const ScanResult found = ScanAddressBook::examine({QString(conditionInfo(Condition::EmptyNotes).title)});
        const Findings *findings = found.find(Condition::EmptyNotes);
        QVERIFY(findings);
        const ABPersonPtr person = std::get<std::vector<ABPersonPtr>>(*findings).front();
        Answers answers(true);
        const Finding finding{Condition::EmptyNotes, person, {}, {}};
        const FixOutcome outcome = processEmptyNotesContacts(finding, u("Delete the blank property"), answers);
        QVERIFY2(!outcome.error, outcome.error ? qPrintable(outcome.error->text) : "");
        QTRY_VERIFY_WITH_TIMEOUT(!cardOnServer().contains("NOTE"), 20'000);
        QVERIFY(cardOnServer().contains("X-CLUB-NUMBER:42"));
        QVERIFY(cardOnServer().contains("N:Lee;Ann;;;"));
    }

    /// The daemon has not looked at the server since.
    void editOnTheServerIsKept()
    {
        const auto book = ABAddressBook::sharedAddressBook();
        QVERIFY(book);
        const ABPersonPtr person = book->personWithUniqueId(u("p1"));
        write(fileOf("collection-root/club/book/p1.vcf"),
            cardOnServer().replace("END:VCARD", "TITLE:theirs\r\nEND:VCARD"));
        person->setValue(u("mine"), kABJobTitleProperty);
        person->setValue(u("mine"), kABNicknameProperty);
        Error error;
        QVERIFY(!book->save(&error));
        QVERIFY2(error.kind == ErrorKind::Conflict, qPrintable(error.text));
        QVERIFY(cardOnServer().contains("TITLE:theirs") && !cardOnServer().contains("mine"));
        // Their state arrives by itself, and the next change is made on it.
        QTRY_VERIFY_WITH_TIMEOUT(
            book->refresh() && person->valueForProperty(kABJobTitleProperty) == ABValue(u("theirs")), 20'000);
        book->save();
        person->setValue(u("later"), kABNicknameProperty);
        QVERIFY2(book->save(&error), qPrintable(error.text));
        QTRY_VERIFY_WITH_TIMEOUT(cardOnServer().contains("NICKNAME:later"), 20'000);
        QVERIFY(cardOnServer().contains("TITLE:theirs"));
    }

    void serverThatIsGone()
    {
        const auto book = ABAddressBook::sharedAddressBook();
        QVERIFY(book);
        m_server.kill();
        m_server.waitForFinished();
        book->personWithUniqueId(u("p1"))->setValue(u("Bo"), kABFirstNameProperty);
        Error error;
        QVERIFY(!book->save(&error));
        QVERIFY2(error.text.startsWith(u("Club: cannot be changed: ")), qPrintable(error.text));
        QVERIFY(book->hasUnsavedChanges() && book->refresh());
        QVERIFY(cardOnServer().contains("N:Lee;Ann;;;"));
        startServer();
        QTRY_VERIFY_WITH_TIMEOUT(book->save(), 20'000);
        QTRY_VERIFY_WITH_TIMEOUT(cardOnServer().contains("N:Lee;Bo;;;"), 20'000);
    }
};

QTEST_GUILESS_MAIN(CardDavTest)
#include "CardDavTest.moc"
