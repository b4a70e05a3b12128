// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/EdsStore.h"
#include "contacts/book/ABAddressBook.h"
#include "contacts/stores/eds/BookFile.h"
#include "contacts/stores/eds/EdsSession.h"
#include "contacts/stores/eds/StoredCard.h"
#include "contacts/stores/open/OpenStore.h"
#include "support/LogCapture.h"
#include "support/PrivateDesktop.h"
#include "support/SqlQuestion.h"
#include "support/TestPeople.h"

#include <QDir>
#include <QStandardPaths>
#include <QTest>

#include <csignal>
#include <future>

using namespace std::chrono_literals;

class EdsStoreTest : public QObject
{
    Q_OBJECT

private:
    PrivateDesktop m_desktop{20, PrivateDesktop::Disk::MayBecomeFull};
    int m_usedBooks = 0;

    QString newBook() { return QStringLiteral("book%1").arg(m_usedBooks++); }

    std::unique_ptr<EdsStore> open(const QString &book, std::chrono::milliseconds limit = 20s) const
    {
        return std::move(*EdsStore::open({book, m_desktop.dataFolder(), limit}));
    }

    static PersonRecordPtr record(const QByteArray &json) { return recordFromText(json).record; }
    static QString u(const char *text) { return QString::fromUtf8(text); }

    static PersonRecordPtr personOf(EdsStore &store, const QString &uid)
    {
        const auto people = store.loadAll();
        const auto found = std::ranges::find(*people, uid, &StoredRecord::uid);
        return found == people->end() ? nullptr : found->record;
    }

    /// A book as another program sees it: texts.
    class OtherProgram
    {
    public:
        explicit OtherProgram(const QString &book) : m_book(book.toUtf8(), m_guard) { }
        ~OtherProgram()
        {
            m_guard->run([this] { m_book.disconnect(); });
        }
        QByteArray text(QByteArray uid)
        {
            QByteArray text;
            m_guard->run([&] {
                const auto cards = m_book.cards(&uid, 1);
                text = cards && !cards->empty() ? cards->front().text : QByteArray();
            });
            return text;
        }
        bool write(const QByteArray &uid, const QByteArray &text)
        {
            bool done = false;
            m_guard->run([&] {
                const auto cards = m_book.cards(&uid, 1);
                done = bool(cards && cards->empty() ? m_book.add({{uid, text}}) : m_book.modify({{uid, text}}));
            });
            return done;
        }

    private:
        std::shared_ptr<CallGuard> m_guard = std::make_shared<CallGuard>(20s);
        EdsBook m_book;
    };

    static QByteArray cardOf(QByteArray lines)
    {
        return "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:u\r\n" + lines.replace('|', "\r\n") + "\r\nEND:VCARD\r\n";
    }

    /// The daemon's file of a book.
    static QString fileOf(const QString &book)
    {
        return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
            + QStringLiteral("/evolution/addressbook/%1/contacts.db").arg(book);
    }

    /// From now on, until it saves again, the daemon calls the book's state otherwise than its file does.
    static bool setOtherStateInFile(const QString &book)
    {
        return askSql(fileOf(book), "UPDATE keys SET value = 'x' WHERE key = 'revision'").isEmpty();
    }

    /// Breaks the page that the byte @p at is in, on the disk only: the daemon holds in its memory what it has read.
    static bool damage(QFile &file, qsizetype at)
    {
        constexpr qsizetype kPage = 4096;
        return at > kPage && file.seek(at / kPage * kPage) && file.putChar('\x7F');
    }

    static QStringList files(const QString &folder, const QString &pattern)
    {
        QStringList found;
        for (const QString &book : QDir(folder).entryList({QStringLiteral("eds-*")}, QDir::Dirs)) {
            for (const char *part : {"", "/backups", "/history"}) {
                const QDir files(folder + u'/' + book + QString::fromLatin1(part), pattern);
                for (const QString &name : files.entryList(QDir::Files))
                    found += files.filePath(name);
            }
        }
        return found;
    }

private Q_SLOTS:
    void initTestCase()
    {
        if (!m_desktop.problem().isEmpty())
            QSKIP(qPrintable(m_desktop.problem()));
    }

    void cardsOfOthersAreReadAndLeftAlone_data()
    {
        QTest::addColumn<QByteArray>("lines");
        QTest::addColumn<QByteArray>("json");
        const auto row = [](const char *name, const char *lines, const char *json) {
            QTest::newRow(name) << QByteArray(lines) << QByteArray(json);
        };
        // GNOME Contacts 43 writes an edited address at the end, without its group, with the label in a parameter.
        row("an e-mail edited in GNOME Contacts",
            "FN:A B|N:B;A;;;|item1.X-ABLabel:Boat|X-OTHER;P=1:x|EMAIL;TYPE=other;X-GOOGLE-LABEL=\"Boat, S\":a@b",
            "{'email':[{'label':'Boat, S','value':'a@b'}]}");
        row("phones with the number that the daemon adds", "TEL;TYPE=CELL:0151 1|TEL;TYPE=WORK,FAX:2",
            "{'phone':[{'label':'_$!<Mobile>!$_','value':'0151 1'},{'label':'_$!<WorkFAX>!$_','value':'2'}]}");
        row("accounts and relations of Evolution", "X-JABBER;TYPE=HOME:j@x|X-EVOLUTION-SPOUSE:S",
            "{'instantMessage':[{'label':'_$!<Home>!$_','value':{'service':'JabberInstant','username':'j@x'}}],"
            "'relatedNames':[{'label':'_$!<Spouse>!$_','value':'S'}]}");
        row("a birthday of the far past", "BDAY:1901-02-03|CATEGORIES:a,b|GENDER:M", "{'birthday':'1901-02-03'}");
    }
    void cardsOfOthersAreReadAndLeftAlone()
    {
        QFETCH(QByteArray, lines);
        QFETCH(QByteArray, json);
        static QString book;
        if (book.isEmpty())
            book = newBook();
        OtherProgram other(book);
        QVERIFY(other.write("u", cardOf(lines)));
        const auto store = open(book);
        const PersonRecordPtr before = personOf(*store, u("u"));
        const PersonRecordPtr wanted = record(json);
        for (const ABPropertyInfo &info : allProperties()) {
            const ABValue value = wanted->value(info.property);
            if (!std::holds_alternative<std::monostate>(value))
                QVERIFY2(before->value(info.property) == value, info.name.data());
        }
        auto after = std::make_shared<PersonRecord>(*before);
        after->setText(ABProperty::Note, u("n"));
        const QByteArray textBefore = StoredCard::normalised(other.text("u"));
        QVERIFY(store->commit({{u("u"), before, after}}));
        QByteArray textAfter = StoredCard::normalised(other.text("u"));
        QVERIFY2(textAfter.contains("NOTE:n"), textAfter.constData());
        textAfter.remove(textAfter.indexOf("NOTE:n\r\n"), 8);
        const auto sortedLines = [](const QByteArray &text) {
            QByteArrayList all = text.split('\n');
            std::ranges::sort(all);
            return all;
        };
        QCOMPARE(sortedLines(textAfter), sortedLines(textBefore));
        QVERIFY(store->commit({{u("u"), after, nullptr}}));
        QVERIFY(other.text("u").isNull());
    }

    void whatWeWriteLooksRightElsewhere()
    {
        const QString book = newBook();
        const auto store = open(book);
        const auto wanted = record("{'firstName':'A','email':[{'label':'Boat, S','value':'a@b'},"
                                   "{'label':'_$!<Work>!$_','value':'c@d'}],'image':'/9j/4AAQ'}");
        QVERIFY(store->commit({{u("u"), nullptr, wanted}}));
        OtherProgram other(book);
        const QByteArray text = other.text("u");
        QVERIFY2(text.contains("X-GOOGLE-LABEL=\"Boat, S\""), text.constData());
        QVERIFY2(text.contains("EMAIL;TYPE=WORK:c@d"), text.constData());
        QVERIFY2(text.contains("PHOTO;VALUE=uri:file://"), text.constData());
        const PersonRecordPtr before = personOf(*open(book), u("u"));
        QVERIFY(*before == *wanted); // the marks for others are no lines of their own
        auto after = std::make_shared<PersonRecord>(*before);
        after->setImageData("\xFF\xD8\xFFother");
        QVERIFY(store->commit({{u("u"), before, after}}));
        QVERIFY(*personOf(*store, u("u")) == *after);
        auto without = std::make_shared<PersonRecord>(*after);
        without->setImageData({});
        QVERIFY(store->commit({{u("u"), after, without}}));
        QVERIFY(!other.text("u").contains("PHOTO"));
    }

    void twoClients()
    {
        const QString book = newBook();
        const auto mine = open(book);
        const auto a = record("{'firstName':'A'}");
        QVERIFY(mine->commit({{u("u"), nullptr, a}, {u("v"), nullptr, a}}));
        QVERIFY(mine->loadAll());
        OtherProgram other(book);
        // A line that no property holds is no conflict, and both changes are there.
        QVERIFY(other.write("u", cardOf("N:;A;;;|FN:A|X-THEIRS:1")));
        auto b = std::make_shared<PersonRecord>(*a);
        b->setText(ABProperty::Note, u("b"));
        QVERIFY(mine->commit({{u("u"), a, b}}));
        const QByteArray both = other.text("u");
        QVERIFY2(both.contains("X-THEIRS:1") && both.contains("NOTE:b"), both.constData());
        // A value is one, and theirs stays; nothing else of the save is made.
        QVERIFY(other.write("u", cardOf("N:;Z;;;|NOTE:b")));
        const auto refused = mine->commit({{u("v"), a, b}, {u("u"), b, a}});
        QVERIFY(!refused);
        QCOMPARE(refused.error().kind, ErrorKind::Conflict);
        QVERIFY(other.text("u").contains("N:;Z;;;"));
        QVERIFY(!other.text("v").contains("NOTE"));
        const auto changes = mine->takeChangesFromOutside();
        const auto theirs = std::ranges::find(*changes, u("u"), &OutsideChange::uid);
        QCOMPARE(*theirs->now->text(ABProperty::FirstName), u("Z"));
        QVERIFY(mine->takeChangesFromOutside()->empty());
        // A list of contacts is nobody.
        QVERIFY(other.write("l", cardOf("FN:L|X-EVOLUTION-LIST:TRUE|EMAIL:a@b")));
        QVERIFY(mine->takeChangesFromOutside()->empty());
        QCOMPARE(mine->loadAll()->size(), std::size_t(2));
        // The daemon's name for somebody may be less than what stands in the card.
        QVERIFY(other.write("b", cardOf("N:;Blank;;;").replace("UID:u", "UID:b ")));
        for (const bool isAsked : {false, true}) {
            QVERIFY(!isAsked || setOtherStateInFile(book));
            QVERIFY(personOf(*mine, u("b")));
        }
        QVERIFY(mine->commit({{u("b"), personOf(*mine, u("b")), nullptr}}));
        QVERIFY(!personOf(*mine, u("b")));
    }

    void manyPeople()
    {
        const QString book = newBook();
        const auto store = open(book);
        std::vector<RecordChange> changes;
        for (int i = 0; i < 1200; ++i)
            changes.push_back({QStringLiteral("p%1").arg(i, 4, 10, QChar(u'0')), nullptr,
                record("{'firstName':'" + QByteArray::number(i) + "'}")});
        QVERIFY(store->commit(changes));
        const auto people = open(book)->loadAll();
        QCOMPARE(people->size(), changes.size());
        for (std::size_t i = 0; i < changes.size(); ++i) {
            QCOMPARE((*people)[i].uid, changes[i].uid);
            QVERIFY(*(*people)[i].record == *changes[i].after);
        }
        QVERIFY(store->takeChangesFromOutside()->size() <= changes.size());

        for (const bool isAsked : {false, true}) { // the daemon, instead of its file
            QVERIFY(!isAsked || setOtherStateInFile(book));
            std::vector<qint64> seen;
            store->setLoadProgress([&seen](qint64 done, qint64 total) {
                if (done != 0 && (seen.empty() || seen.back() != done)) // a slow daemon has it told again
                    seen.push_back(done);
                return total == 1200 || done == 0;
            });
            QCOMPARE(store->loadAll()->size(), changes.size());
            QCOMPARE(seen, (std::vector<qint64>{500, 1000, 1200}));
            store->setLoadProgress([](qint64 done, qint64) { return done < 1000; });
            QCOMPARE(store->loadAll().error().kind, ErrorKind::Cancelled);
        }
        store->setLoadProgress({});
        for (auto &change : changes) {
            change.before = std::exchange(change.after, nullptr);
        }
        QVERIFY(store->commit(changes));
        QVERIFY(open(book)->loadAll()->empty());
    }

    void cardsTooLargeForOneMessage()
    {
        const QString book = newBook();
        OtherProgram other(book);
        const QByteArray note(qsizetype(6) * 1024 * 1024, 'x'); // 24 of them are more than the bus lets through
        for (int i = 0; i < 24; ++i)
            QVERIFY(other.write("p" + QByteArray::number(i), cardOf("N:;A;;;|NOTE:" + note).replace("UID:u\r\n", "")));
        const auto store = open(book);
        const auto people = store->loadAll();
        QVERIFY2(people, people ? "" : qPrintable(people.error().text));
        QCOMPARE(people->size(), std::size_t(24));
        QCOMPARE(people->back().record->text(ABProperty::Note)->size(), note.size());
        QVERIFY(setOtherStateInFile(book)); // by the bus
        const auto asked = store->loadAll();
        QVERIFY2(asked, asked ? "" : qPrintable(asked.error().text));
        QCOMPARE(asked->size(), std::size_t(24));
        QCOMPARE(asked->back().record->text(ABProperty::Note)->size(), note.size());
    }

    /// A local book is read from its file where that can be, else the daemon is asked. Both have to say the same.
    void theFileSaysWhatTheDaemonSays()
    {
        const QString book = newBook();
        OtherProgram other(book);
        const QByteArray picture = "PHOTO;ENCODING=b;TYPE=JPEG:/9j/4AAQ";
        QVERIFY(other.write("a", cardOf("N:A;;;;|TEL;TYPE=HOME:030 / 12|" + picture).replace("UID:u", "UID:a")));
        QVERIFY(other.write("l", cardOf("FN:All|X-EVOLUTION-LIST:TRUE|EMAIL:a@b.c").replace("UID:u", "UID:l")));
        std::vector<RecordChange> changes;
        for (int i = 0; i < 1200; ++i)
            changes.push_back({QStringLiteral("p%1").arg(i, 4, 10, QChar(u'0')), nullptr,
                record("{'firstName':'" + QByteArray::number(i) + "','note':'" + QByteArray(300, 'x') + "'}")});
        const auto store = open(book);
        QVERIFY(store->commit(changes));
        QString log;
        const auto load = [&] {
            const LogCapture lines;
            auto people = store->loadAll();
            log = lines.of(u("peoplenook.eds")).join(u'\n');
            return people ? *people : std::vector<StoredRecord>();
        };
        std::vector<StoredRecord> fromFile;
        QTRY_VERIFY2((fromFile = load(), log.isEmpty()), qPrintable(log)); // the daemon may tell its state a bit later
        QCOMPARE(fromFile.size(), changes.size() + 1);
        QVERIFY(fromFile.front().record->imageData());
        const auto isTheSame = [&fromFile](const std::vector<StoredRecord> &people) {
            return std::ranges::equal(people, fromFile, [](const StoredRecord &one, const StoredRecord &another) {
                return one.uid == another.uid && *one.record == *another.record;
            });
        };

        QFile file(fileOf(book));
        QVERIFY(file.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
        const QByteArray whole = file.readAll();
        QVERIFY(damage(file, whole.indexOf("UID:p0700\r\n")));
        QVERIFY(isTheSame(load()));
        QVERIFY2(log.contains(u("cannot be read on")), qPrintable(log));
        QVERIFY(file.seek(0) && file.write(whole) == whole.size());

        QVERIFY(setOtherStateInFile(book));
        QVERIFY(isTheSame(load()));
        QVERIFY2(log.contains(u("is of x and the book of")), qPrintable(log));

        // What was taken from the file is no change when the daemon says it.
        const auto first = open(book);
        QVERIFY(other.write("a", other.text("a").replace("TEL", "NOTE:Called\r\nTEL"))); // the file is right again
        QCOMPARE(first->loadAll()->size(), fromFile.size());
        QVERIFY(other.write("a", other.text("a").replace("Called", "Met")));
        QVERIFY(setOtherStateInFile(book));
        const auto changed = first->takeChangesFromOutside();
        QVERIFY(changed);
        QCOMPARE(changed->size(), std::size_t(1));
        QCOMPARE(*changed->front().now->text(ABProperty::Note), u("Met"));
    }

    void filesThatAreNotRead()
    {
        const QString path = m_desktop.folder() + QStringLiteral("/some.db");
        const auto isRead = [&path] { return BookFile::open(path, "r") != nullptr; };
        QVERIFY(!isRead());
        QVERIFY(!QFile::exists(path));
        const char *tables = "CREATE TABLE keys (key, value, folder_id);"
                             "INSERT INTO keys VALUES ('revision', 'r', 'folder_id');"
                             "CREATE TABLE folder_id (uid, vcard);";
        QCOMPARE(askSql(path, tables), QStringList());
        QVERIFY(isRead());
        QVERIFY(!BookFile::open(path, "s"));
        QVERIFY(!BookFile::open(path, ""));
        QVERIFY(!BookFile::open({}, "r"));
        QCOMPARE(askSql(path, "INSERT INTO folder_id VALUES ('a', 'card'), ('b', NULL)"), QStringList());
        const auto file = BookFile::open(path, "r");
        QCOMPARE(file->count(), std::size_t(2));
        QCOMPARE(file->next(1)->front().text, QByteArray("card"));
        QVERIFY(!file->next(1));
        QCOMPARE(askSql(path, "ALTER TABLE folder_id RENAME vcard TO text"), QStringList({u("database is locked")}));
    }

    void backupsComeBeforeTheFirstChange()
    {
        const QString book = newBook();
        const QString data = m_desktop.folder() + QStringLiteral("/backups");
        const auto a = record("{'firstName':'A'}");
        const auto b = record("{'firstName':'B'}");
        const auto begun = open(book)->commit({{u("u"), nullptr, a}});
        QVERIFY2(begun, begun ? "" : qPrintable(begun.error().text));
        for (int run = 0; run < 12; ++run) {
            const auto store = std::move(*EdsStore::open({book, data, 20s}));
            const auto saved = store->commit({{u("u"), run % 2 ? b : a, run % 2 ? a : b}});
            QVERIFY2(saved, saved ? "" : qPrintable(saved.error().text));
            QVERIFY(store->commit({{u("v") + QString::number(run), nullptr, a}}));
        }
        const QStringList backups = files(data, QStringLiteral("*.vcf"));
        QCOMPARE(backups.size(), 10);
        QFile newest(backups.back());
        QVERIFY(newest.open(QIODevice::ReadOnly));
        const QByteArray cards = newest.readAll();
        QCOMPARE(cards.count("BEGIN:VCARD"), 12); // u, v0 to v10
        QVERIFY(cards.contains("N:;B;;;"));
        QCOMPARE(newest.permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());

        // No backup, no change.
        QFile blocker(m_desktop.folder() + QStringLiteral("/blocker"));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        const auto store = std::move(*EdsStore::open({book, blocker.fileName(), 20s}));
        const auto refused = store->commit({{u("u"), a, b}});
        QVERIFY(!refused);
        QCOMPARE(refused.error().kind, ErrorKind::Io);
        QVERIFY2(refused.error().text.contains(u("no backup")), qPrintable(refused.error().text));
        QVERIFY(*personOf(*store, u("u")) == *a);
    }

    /// The daemon keeps them in files of its own, which would go with it.
    void backupsHoldPictures()
    {
        const QString book = newBook();
        const QString data = m_desktop.folder() + QStringLiteral("/pictures");
        OtherProgram other(book);
        QVERIFY(
            other.write("u", cardOf("N:;A;;;|PHOTO;ENCODING=b;TYPE=JPEG:/9j/4AAQ|LOGO;ENCODING=b;TYPE=JPEG:/9j/4BBQ")));
        const QByteArray text = other.text("u");
        QVERIFY2(text.count(";VALUE=uri:file://") == 2, text.constData());
        const auto store = std::move(*EdsStore::open({book, data, 20s}));
        QVERIFY(store->commit({{u("v"), nullptr, record("{'firstName':'B'}")}}));
        QFile backup(files(data, QStringLiteral("*.vcf")).value(0));
        QVERIFY(backup.open(QIODevice::ReadOnly));
        const QByteArray cards = backup.readAll();
        QVERIFY2(cards.contains("PHOTO;ENCODING=b:/9j/4AAQ\r\n"), cards.constData());
        QVERIFY2(cards.contains("LOGO;ENCODING=b:/9j/4BBQ\r\n"), cards.constData());
    }

    void daemonKilledDuringASave()
    {
        const QString book = newBook();
        const auto store = open(book);
        const auto a = record("{'firstName':'A'}");
        const auto b = record("{'firstName':'B'}");
        const auto begun = store->commit({{u("gone"), nullptr, a}});
        QVERIFY2(begun, begun ? "" : qPrintable(begun.error().text));
        int whole = 0;
        int none = 0;
        for (int round = 0; round < 8; ++round) {
            std::vector<RecordChange> changes;
            for (int i = 0; i < 1500; ++i)
                changes.push_back({QStringLiteral("r%1-%2").arg(round).arg(i), nullptr, b});
            changes.push_back({u("gone"), round % 2 ? b : a, round % 2 ? a : b});
            std::thread killer([round] {
                std::this_thread::sleep_for(std::chrono::milliseconds(40 * (round + 1)));
                PrivateDesktop::killDaemon();
            });
            const auto saved = store->commit(changes);
            killer.join();
            const auto people = store->loadAll();
            QVERIFY2(people, people ? "" : qPrintable(people.error().text));
            const auto ofRound = std::ranges::count_if(*people,
                [round](const StoredRecord &each) { return each.uid.startsWith(QStringLiteral("r%1-").arg(round)); });
            QVERIFY2(ofRound == 0 || ofRound == 1500, qPrintable(QString::number(ofRound)));
            QCOMPARE(bool(saved), ofRound == 1500);
            const PersonRecordPtr other = personOf(*store, u("gone"));
            QVERIFY(*other == *(saved ? changes.back().after : changes.back().before));
            ++(saved ? whole : none);
            if (!saved)
                QVERIFY(store->commit({{u("gone"), changes.back().before, changes.back().after}}));
        }
        qInfo("saved %d, refused %d", whole, none);
        QVERIFY(files(m_desktop.dataFolder(), QStringLiteral("unfinished*")).isEmpty());
    }

    /// What a program left behind that ended in the middle of a save.
    void saveCutShortIsSettled()
    {
        const QString book = newBook();
        const auto a = record("{'firstName':'A'}");
        QVERIFY(open(book)->commit({{u("u"), nullptr, a}}));
        OtherProgram other(book);
        const QByteArray before = other.text("u");
        auto journal = std::make_unique<EdsJournal>(folderOfBook(m_desktop.dataFolder(), book));
        const QByteArray after = cardOf("N:;Half;;;");
        QVERIFY(journal->begin({{"u", before, after}, {"v", {}, cardOf("N:;V;;;")}}));
        QVERIFY(other.write("u", after)); // and not the second one
        QVERIFY(!(*open(book)->loadAll()->front().record == *a)); // while it lives, it is its own affair
        journal.reset();
        const auto people = open(book)->loadAll();
        QCOMPARE(people->size(), std::size_t(1));
        QVERIFY(*people->front().record == *a);
        QVERIFY(files(m_desktop.dataFolder(), QStringLiteral("unfinished*")).isEmpty());
    }

    void diskFullUnderTheDaemon()
    {
        const QString book = newBook();
        const auto store = open(book);
        const auto a = record("{'firstName':'A'}");
        const auto b = record("{'firstName':'B'}");
        QVERIFY(store->commit({{u("u"), nullptr, a}}));
        std::vector<RecordChange> changes{{u("u"), a, b}};
        for (int i = 0; i < 600; ++i) // more than one call
            changes.push_back({QStringLiteral("p%1").arg(i), nullptr, b});
        m_desktop.setDiskFull(true);
        const auto refused = store->commit(changes);
        const auto people = store->loadAll();
        m_desktop.setDiskFull(false);
        QVERIFY(!refused && people);
        QVERIFY2(refused.error().text.contains(u("cannot be changed: ")), qPrintable(refused.error().text));
        QVERIFY(people->size() == 1 && *people->front().record == *a);
        QCOMPARE(store->history()->size(), std::size_t(1));
        QVERIFY(store->commit(changes));
        QCOMPARE(store->loadAll()->size(), std::size_t(601));

        // What an earlier program left half done cannot be taken back before there is room.
        auto journal = std::make_unique<EdsJournal>(folderOfBook(m_desktop.dataFolder(), book));
        OtherProgram other(book);
        const QByteArray before = other.text("u");
        const QByteArray after = cardOf("N:;Half;;;");
        QVERIFY(journal->begin({{"u", before, after}, {"v", {}, cardOf("N:;V;;;")}}));
        QVERIFY(other.write("u", after));
        journal.reset();
        m_desktop.setDiskFull(true);
        const auto later = open(book);
        const auto half = personOf(*later, u("u"));
        const auto waiting = later->commit({{u("p0"), b, a}});
        m_desktop.setDiskFull(false);
        QVERIFY(half && !(*half == *b));
        QVERIFY(!waiting);
        QVERIFY(later->commit({{u("p0"), b, a}}));
        QVERIFY(*personOf(*later, u("u")) == *b);
    }

    void daemonGoneBetweenCalls()
    {
        const auto store = open(newBook());
        const auto a = record("{'firstName':'A'}");
        PrivateDesktop::killDaemon();
        QVERIFY(store->commit({{u("u"), nullptr, a}}));
        PrivateDesktop::killDaemon();
        QVERIFY(store->takeChangesFromOutside());
        PrivateDesktop::killDaemon();
        QCOMPARE(store->loadAll()->size(), std::size_t(1));
    }

    void silentDaemon()
    {
        const auto store = open(newBook(), 500ms);
        QVERIFY(store->loadAll());
        const qint64 daemon = PrivateDesktop::daemon();
        ::kill(pid_t(daemon), SIGSTOP);
        const auto silent = store->loadAll();
        ::kill(pid_t(daemon), SIGCONT);
        QVERIFY(!silent);
        QCOMPARE(silent.error().kind, ErrorKind::Unavailable);
        QTRY_VERIFY(store->loadAll());

        // Whoever waits may give up long before the limit.
        const auto patient = open(newBook(), 60s);
        patient->setLoadProgress([](qint64, qint64 total) { return total != 0; });
        ::kill(pid_t(PrivateDesktop::daemon()), SIGSTOP);
        const auto givenUp = patient->loadAll();
        ::kill(pid_t(PrivateDesktop::daemon()), SIGCONT);
        QCOMPARE(givenUp.error().kind, ErrorKind::Cancelled);
        QTRY_VERIFY(store->loadAll());

        // So may whoever closes a book that is looked at.
        const auto watched = std::move(*ABAddressBook::open(open(newBook(), 60s)));
        watched->setChangeListener([] {});
        ::kill(pid_t(PrivateDesktop::daemon()), SIGSTOP);
        auto look = std::async(std::launch::async, [&watched] { return watched->refresh(); });
        look.wait_for(300ms);
        watched->setChangeListener({});
        ::kill(pid_t(PrivateDesktop::daemon()), SIGCONT);
        QCOMPARE(look.get().error().kind, ErrorKind::Cancelled);
        watched->setChangeListener([] {});
        QTRY_VERIFY(watched->refresh());
    }

    void choosing()
    {
        const auto chosen = std::move(*openStore(u("eds:book1")));
        QCOMPARE(chosen->name(), u("Book 1"));
        QCOMPARE(chosen->desktopId(u("p:1")), u("eds:book1:p:1"));
        const auto none = openStore(u("eds:nothing"));
        QVERIFY(!none);
        QCOMPARE(none.error().kind, ErrorKind::NotFound);
        const auto standard = openStore(QString());
        QCOMPARE((*standard)->name(), (*openStore(u("eds:")))->name());
        const auto books = knownBooks();
        QCOMPARE(std::ranges::count(books, true, &KnownBook::isDefault), 1);
        QVERIFY(std::ranges::find(books, u("eds:book1"), &KnownBook::where) != books.end());
    }

    /// Last, since there is no desktop any more afterwards.
    void theBusEnds()
    {
        const QString book = newBook();
        const auto store = open(book);
        const auto a = record("{'firstName':'A'}");
        QVERIFY(store->commit({{u("u"), nullptr, a}}));
        m_desktop.killBus();
        const auto saved = store->commit({{u("u"), a, nullptr}});
        QVERIFY(!saved);
        QCOMPARE(saved.error().kind, ErrorKind::Unavailable);
        QVERIFY(!store->loadAll());
        // Without a choice the file is opened.
        QVERIFY((*openStore(QString()))->name().endsWith(u(".sqlite")));
        QCOMPARE(knownBooks().size(), std::size_t(1));
    }
};

QTEST_GUILESS_MAIN(EdsStoreTest)
#include "EdsStoreTest.moc"
