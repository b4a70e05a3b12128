// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/ABAddressBook.h"
#include "contacts/stores/eds/EdsJournal.h"
#include "contacts/stores/eds/EdsStore.h"
#include "contacts/stores/open/OpenStore.h"
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

#include <algorithm>
#include <csignal>
#include <utility>

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
        write(rights,
            "[read-only]\nuser: .*\ncollection: club/notice.*\npermissions: Rr\n"
            "[all]\nuser: .*\ncollection: .*\npermissions: RrWw\n");
        write(fileOf("config"),
            "[server]\nhosts = 127.0.0.1:" + QByteArray::number(m_port) + "\n[auth]\ntype = none\n[rights]\n"
                + "type = from_file\nfile = " + rights.toUtf8()
                + "\n[storage]\nfilesystem_folder = " + fileOf("").toUtf8() + "\n[web]\ntype = none\n");
        m_server.start(u("radicale"), {u("--config"), fileOf("config")});
        QTRY_VERIFY_WITH_TIMEOUT(isServing(), 20'000);
    }

    void writeSource(const QByteArray &name, const char *uid, const QByteArray &path) const
    {
        write(m_desktop.folder() + u("/config/evolution/sources/") + u(uid) + u(".source"),
            "[Data Source]\nDisplayName=" + name
                + "\nEnabled=true\nParent=carddav-stub\n\n[Address Book]\nBackendName=carddav\n\n[Authentication]\n"
                  "Host=127.0.0.1\nMethod=none\nPort="
                + QByteArray::number(m_port) + "\n\n[Security]\nMethod=none\n\n[WebDAV Backend]\nResourcePath=" + path
                + "\n\n[Offline]\nStaySynchronized=true\n");
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
        write(fileOf("collection-root/club/notice/.Radicale.props"), R"({"tag": "VADDRESSBOOK"})");
        write(fileOf("collection-root/club/notice/n1.vcf"),
            "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:n1\r\nFN:Bo\r\nN:;Bo;;;\r\nEND:VCARD\r\n");
        startServer();
        writeSource("Club", "club", "/club/book/");
        writeSource("Notice", "notice", "/club/notice/");
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

    /// A save of more cards than the daemon is given at once.
    void manyChangesInOneSave()
    {
        const auto store = std::move(*EdsStore::open({u("club"), m_desktop.dataFolder(), std::chrono::seconds(20)}));
        const auto noted = [this](const QByteArray &note) {
            const QDir folder(fileOf("collection-root/club/book"));
            const QStringList names = folder.entryList({u("*.vcf")});
            return int(std::ranges::count_if(names, [&](const QString &name) {
                QFile card(folder.filePath(name));
                return card.open(QIODevice::ReadOnly) && card.readAll().contains("NOTE:" + note);
            }));
        };
        std::vector<RecordChange> changes;
        for (int i = 0; i < 12; ++i) {
            auto record = std::make_shared<PersonRecord>();
            record->setText(ABProperty::Note, u("many"));
            changes.push_back({u("many%1").arg(i), nullptr, std::move(record)});
        }
        const auto save = [&] {
            const auto saved = store->commit(changes);
            QVERIFY2(saved, saved ? "" : qPrintable(saved.error().text));
        };
        save();
        QTRY_COMPARE_WITH_TIMEOUT(noted("many"), 12, 20'000);
        for (auto &change : changes) {
            auto record = std::make_shared<PersonRecord>(*change.after);
            record->setText(ABProperty::Note, u("other"));
            change.before = std::exchange(change.after, std::move(record));
        }
        save();
        QTRY_COMPARE_WITH_TIMEOUT(noted("other"), 12, 20'000);
        for (auto &change : changes)
            change.before = std::exchange(change.after, nullptr);
        save();
        QTRY_COMPARE_WITH_TIMEOUT(noted(""), 0, 20'000);
    }

    /// Which the daemon finds out in its own time, after the book was opened.
    void bookThatMayOnlyBeRead()
    {
        auto store = openStore(u("eds:notice"));
        QVERIFY2(store, store ? "" : qPrintable(store.error().text));
        const auto book = *ABAddressBook::open(std::move(*store));
        QTRY_VERIFY_WITH_TIMEOUT(book->refresh() && book->personWithUniqueId(u("n1")) && !book->canWrite(), 20'000);
        book->personWithUniqueId(u("n1"))->setValue(u("x"), kABNoteProperty);
        Error error;
        QVERIFY(!book->save(&error));
        QCOMPARE(error, (Error{ErrorKind::ReadOnly, u("Notice: this address book cannot be changed")}));
    }

    /// The daemon goes on with a change that it was asked for, whoever has given up waiting.
    void serverThatIsSilent()
    {
        const auto store = std::move(*EdsStore::open({u("club"), m_desktop.dataFolder(), std::chrono::seconds(1)}));
        const auto people = store->loadAll();
        const auto before = people->front().record;
        const auto with = [&before](const char *note) {
            auto record = std::make_shared<PersonRecord>(*before);
            record->setText(ABProperty::Note, u(note));
            return record;
        };
        const auto journals = [this] {
            return QDir(folderOfBook(m_desktop.dataFolder(), u("club"))).entryList({u("unfinished*")}).size();
        };
        ::kill(pid_t(m_server.processId()), SIGSTOP);
        const auto unanswered = store->commit({{u("p1"), before, with("first")}});
        ::kill(pid_t(m_server.processId()), SIGCONT);
        QCOMPARE(unanswered.error().kind, ErrorKind::Unavailable);
        QCOMPARE(journals(), 1);
        QTRY_VERIFY_WITH_TIMEOUT(cardOnServer().contains("NOTE:first"), 20'000);
        bool isSaved = false;
        QTRY_VERIFY_WITH_TIMEOUT(
            isSaved = isSaved || store->commit({{u("p1"), with("first"), with("second")}}), 20'000);
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
