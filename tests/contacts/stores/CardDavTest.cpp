// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/ABAddressBook.h"
#include "contacts/stores/eds/EdsJournal.h"
#include "contacts/stores/eds/EdsStore.h"
#include "support/Files.h"
#include "support/PrivateDesktop.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include <algorithm>
#include <csignal>
#include <utility>

/// A book on a CardDAV server (Radicale), as the desktop has it: the whole way from the server through the daemon to an
/// address book, and back.
class CardDavTest : public QObject
{
    Q_OBJECT

private:
    PrivateDesktop m_desktop;
    QProcess m_server;
    quint16 m_port = 0;

    static QString u(const char *text) { return QString::fromLatin1(text); }

    /// In the server's folder.
    QString fileOf(const char *path) const { return m_desktop.folder() + u("/server/") + u(path); }

    static void write(const QString &path, const QByteArray &content)
    {
        QDir().mkpath(QFileInfo(path).path());
        put(path, content);
    }

    QByteArray cardOnServer(const char *uid = "p1") const
    {
        return contentOf(fileOf("collection-root/club/book/") + u(uid) + u(".vcf"));
    }

    std::unique_ptr<AddressBookStore> open(
        const char *book, std::chrono::seconds limit = std::chrono::seconds(20)) const
    {
        return std::move(*EdsStore::open({u(book), m_desktop.dataFolder(), limit}));
    }

    static PersonRecordPtr noted(PersonRecord record, const char *note)
    {
        record.setText(kABNoteProperty, u(note));
        return std::make_shared<PersonRecord>(std::move(record));
    }

    int cardsWith(const QByteArray &note) const
    {
        const QStringList names = QDir(fileOf("collection-root/club/book"), u("*.vcf")).entryList();
        return int(std::ranges::count_if(names, [&](const QString &name) {
            return cardOnServer(name.chopped(4).toLatin1().constData()).contains("NOTE:" + note);
        }));
    }

    void startServer()
    {
        QTcpServer free;
        QVERIFY(m_port != 0 || free.listen(QHostAddress::LocalHost));
        m_port = m_port == 0 ? free.serverPort() : m_port;
        free.close();
        m_server.start(u("radicale"),
            {u("--config="), u("--server-hosts=127.0.0.1:%1").arg(m_port), u("--auth-type=none"), u("--web-type=none"),
                u("--storage-filesystem-folder=") + fileOf(""), u("--rights-type=from_file"),
                u("--rights-file=") + fileOf("rights")});
        QTRY_VERIFY_WITH_TIMEOUT(isServing(), 20'000);
    }

    /// A collection with a card on the server, known to the desktop.
    void makeBook(const QByteArray &uid, const QByteArray &name, const char *card, const QByteArray &lines) const
    {
        const QString collection = fileOf("collection-root/club/") + u(uid) + u("/");
        write(collection + u(".Radicale.props"), R"({"tag": "VADDRESSBOOK"})");
        write(collection + u(card) + u(".vcf"),
            QByteArray("BEGIN:VCARD\r\nVERSION:3.0\r\nUID:") + card + "\r\n" + lines + "END:VCARD\r\n");
        write(m_desktop.folder() + u("/config/evolution/sources/") + u(uid) + u(".source"),
            "[Data Source]\nDisplayName=" + name
                + "\nEnabled=true\nParent=carddav-stub\n[Address Book]\nBackendName=carddav\n[Authentication]\n"
                  "Host=127.0.0.1\nMethod=none\nPort="
                + QByteArray::number(m_port) + "\n[Security]\nMethod=none\n[WebDAV Backend]\nResourcePath=/club/" + uid
                + "/\n[Offline]\nStaySynchronized=true\n");
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
        write(fileOf("rights"),
            "[read-only]\nuser: .*\ncollection: club/notice.*\npermissions: Rr\n"
            "[all]\nuser: .*\ncollection: .*\npermissions: RrWw\n");
        startServer();
        makeBook("book", "Club", "p1", "FN:Ann Lee\r\nN:Lee;Ann;;;\r\nNOTE:  \r\nX-CLUB-NUMBER:42\r\n");
        makeBook("notice", "Notice", "n1", "FN:Bo\r\nN:;Bo;;;\r\n");
    }

    void cleanupTestCase()
    {
        ABAddressBook::setSharedAddressBook(nullptr);
        m_server.kill();
        m_server.waitForFinished();
    }

    void savesOnTheServer()
    {
        const auto book = *ABAddressBook::open(open("book"));
        // The daemon fetches the cards in its own time.
        QTRY_VERIFY_WITH_TIMEOUT(book->refresh() && book->personWithUniqueId(u("p1")), 20'000);
        ABAddressBook::setSharedAddressBook(book);
        book->personWithUniqueId(u("p1"))->removeValueForProperty(kABNoteProperty);
        Error error;
        QVERIFY2(book->save(&error), qPrintable(error.text));
        QTRY_VERIFY_WITH_TIMEOUT(!cardOnServer().contains("NOTE"), 20'000);
        QVERIFY(cardOnServer().contains("X-CLUB-NUMBER:42") && cardOnServer().contains("N:Lee;Ann;;;"));
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

    /// A save of more cards than the daemon is given at once.
    void manyChangesInOneSave()
    {
        const auto store = open("book");
        std::vector<RecordChange> changes(12);
        for (const char *note : {"many", "other", ""}) { // added, changed, removed
            for (std::size_t i = 0; i < changes.size(); ++i) {
                changes[i].uid = u("many%1").arg(i);
                changes[i].before = std::exchange(changes[i].after, *note ? noted({}, note) : nullptr);
            }
            const auto saved = store->commit(changes);
            QVERIFY2(saved, saved ? "" : qPrintable(saved.error().text));
            QTRY_COMPARE_WITH_TIMEOUT(cardsWith(note), *note ? 12 : 0, 20'000);
        }
    }

    /// Which the daemon finds out in its own time, after the book was opened.
    void bookThatMayOnlyBeRead()
    {
        const auto book = *ABAddressBook::open(open("notice"));
        QTRY_VERIFY_WITH_TIMEOUT(book->refresh() && book->personWithUniqueId(u("n1")) && !book->canWrite(), 20'000);
        book->personWithUniqueId(u("n1"))->setValue(u("x"), kABNoteProperty);
        Error error;
        QVERIFY(!book->save(&error));
        QCOMPARE(error, (Error{ErrorKind::ReadOnly, u("Notice: this address book cannot be changed")}));
    }

    /// The daemon goes on with a change that it was asked for, whoever has given up waiting.
    void serverThatIsSilent()
    {
        const auto store = open("book", std::chrono::seconds(1));
        const auto before = store->loadAll()->front().record;
        const PersonRecordPtr first = noted(*before, "first");
        const auto journals = [this] { // a QDir would remember its first answer
            return QDir(folderOfBook(m_desktop.dataFolder(), u("book"))).entryList({u("unfinished*")}).size();
        };
        ::kill(pid_t(m_server.processId()), SIGSTOP);
        const auto unanswered = store->commit({{u("p1"), before, first}});
        ::kill(pid_t(m_server.processId()), SIGCONT);
        QCOMPARE(unanswered.error().kind, ErrorKind::Unavailable);
        QCOMPARE(journals(), 1);
        QTRY_VERIFY_WITH_TIMEOUT(cardOnServer().contains("NOTE:first"), 20'000);
        bool isSaved = false;
        QTRY_VERIFY_WITH_TIMEOUT(
            isSaved = isSaved || store->commit({{u("p1"), first, noted(*first, "second")}}), 20'000);
        QTRY_VERIFY_WITH_TIMEOUT(cardOnServer().contains("NOTE:second"), 20'000);
        QCOMPARE(journals(), 0);
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
