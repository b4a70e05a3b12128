// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/EdsStore.h"
#include "contacts/book/ABAddressBook.h"
#include "contacts/stores/eds/EdsBook.h"
#include "contacts/stores/eds/EdsJournal.h"
#include "contacts/stores/eds/StoredCard.h"
#include "contacts/stores/open/OpenStore.h"
#include "support/PrivateDesktop.h"
#include "support/Stories.h"
#include "support/TestPeople.h"

#include <QDir>
#include <QTest>

#include <csignal>
#include <future>

using namespace std::chrono_literals;

/// The desktop's store: what every store promises, other programs' cards, sizes, and daemons that fail.
class EdsStoreTest : public QObject
{
    Q_OBJECT

private:
    PrivateDesktop m_desktop{50, PrivateDesktop::Disk::MayBecomeFull};
    int m_usedBooks = 0;
    const PersonRecordPtr m_a = record("{'firstName':'A'}");
    const PersonRecordPtr m_b = record("{'firstName':'B'}");

    using StorePtr = std::unique_ptr<AddressBookStore>;

    QString newBook() { return QStringLiteral("book%1").arg(m_usedBooks++); }

    StorePtr open(const QString &book, std::chrono::milliseconds limit = 20s) const
    {
        return std::move(*EdsStore::open({book, m_desktop.dataFolder(), limit}));
    }

    static PersonRecordPtr record(const QByteArray &json) { return recordFromText(json).record; }
    static QString u(const char *text) { return QString::fromUtf8(text); }

    static PersonRecordPtr personOf(AddressBookStore &store, const QString &uid)
    {
        const auto people = store.loadAll();
        const auto found = std::ranges::find(*people, uid, &StoredRecord::uid);
        return found == people->end() ? nullptr : found->record;
    }

    static std::vector<RecordChange> additions(const QString &prefix, int count, const PersonRecordPtr &record)
    {
        std::vector<RecordChange> changes;
        for (int i = 0; i < count; ++i)
            changes.push_back({prefix + QStringLiteral("%1").arg(i, 4, 10, QChar(u'0')), nullptr, record});
        return changes;
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
        QByteArray text(const QByteArray &uid)
        {
            QByteArray text;
            const auto take = [&text](std::vector<EdsBook::Card> &page, std::size_t /*total*/) {
                text = page.empty() ? QByteArray() : page.front().text;
                return true;
            };
            m_guard->run([&] { static_cast<void>(m_book.read({&uid, 1}, take)); });
            return text;
        }
        bool write(const QByteArray &uid, const QByteArray &lines)
        {
            const QByteArray text = cardOf(lines, uid);
            const bool isNew = this->text(uid).isNull();
            bool done = false;
            m_guard->run([&] {
                done = bool(m_book.change(isNew ? EdsBook::Change::Add : EdsBook::Change::Modify, {{uid, text}}));
            });
            return done;
        }

    private:
        std::shared_ptr<CallGuard> m_guard = std::make_shared<CallGuard>(20s);
        EdsBook m_book;
    };

    static QByteArray cardOf(QByteArray lines, const QByteArray &uid = "u")
    {
        return "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:" + uid + "\r\n" + lines.replace('|', "\r\n") + "\r\nEND:VCARD\r\n";
    }

    bool hasUnfinishedSaves(const QString &book) const
    {
        return !QDir(folderOfBook(m_desktop.dataFolder(), book), QStringLiteral("unfinished*")).isEmpty();
    }

    /// Stops the daemon while @p call runs.
    template <typename Call> static auto whileSilent(Call call)
    {
        const auto daemon = pid_t(PrivateDesktop::daemon());
        ::kill(daemon, SIGSTOP);
        auto result = call();
        ::kill(daemon, SIGCONT);
        return result;
    }

private Q_SLOTS:
    void initTestCase()
    {
        if (!m_desktop.problem().isEmpty())
            QSKIP(qPrintable(m_desktop.problem()));
    }

    void stories_data() { addStories({"eds"}); }
    void stories()
    {
        QFETCH(QStringList, story);
        const QString book = newBook();
        const auto open = [&book] { return std::move(*openStore(u("eds:") + book)); };
        // A card as another program sees it, or writes it: its lines.
        const auto beside = [&book](const QString &name, const QString &rest) -> std::optional<QStringList> {
            if (name == u("kill"))
                PrivateDesktop::killDaemon();
            if (name != u("card"))
                return name == u("kill") ? std::optional(QStringList()) : std::nullopt;
            const QByteArray uid = rest.section(u' ', 0, 0).replace(u'_', u' ').toUtf8();
            OtherProgram other(book);
            if (rest.contains(u' '))
                return other.write(uid, rest.section(u' ', 1).toUtf8()) ? QStringList() : QStringList(u("refused"));
            QStringList lines = u(StoredCard::normalised(other.text(uid))).split(u("\r\n"), Qt::SkipEmptyParts);
            lines.sort();
            return lines.isEmpty() ? QStringList(u("none")) : QStringList(lines.join(u'|'));
        };
        playStory(story, open, beside);
    }

    void whatWeWriteLooksRightElsewhere()
    {
        const QString book = newBook();
        const auto wanted = record("{'firstName':'A','email':[{'label':'Boat, S','value':'a@b'}],'image':'/9j/4AAQ'}");
        QVERIFY(open(book)->commit({{u("u"), nullptr, wanted}}));
        const QByteArray text = OtherProgram(book).text("u");
        QVERIFY2(text.contains("X-GOOGLE-LABEL=\"Boat, S\""), text.constData());
        QVERIFY2(text.contains("PHOTO;VALUE=uri:file://"), text.constData());
        QVERIFY(*personOf(*open(book), u("u")) == *wanted); // the marks for others are not kept as lines
    }

    void manyPeople()
    {
        const QString book = newBook();
        const auto store = open(book);
        auto changes = additions(u("p"), 1200, nullptr);
        for (auto &change : changes)
            change.after = record("{'firstName':'" + change.uid.toUtf8() + "'}");
        QVERIFY(store->commit(changes));
        std::vector<qint64> seen;
        store->setLoadProgress([&seen](qint64 done, qint64 total) {
            if (done != 0 && (seen.empty() || seen.back() != done)) // a slow daemon has it told again
                seen.push_back(done);
            return total == 1200 || done == 0;
        });
        const auto people = store->loadAll();
        QCOMPARE(seen, (std::vector<qint64>{500, 1000, 1200}));
        QCOMPARE(people->size(), changes.size());
        for (std::size_t i = 0; i < changes.size(); ++i) {
            QCOMPARE((*people)[i].uid, changes[i].uid);
            QVERIFY(*(*people)[i].record == *changes[i].after);
        }
        QVERIFY(store->takeChangesFromOutside()->empty());
        store->setLoadProgress([](qint64 done, qint64) { return done < 1000; });
        QCOMPARE(store->loadAll().error().kind, ErrorKind::Cancelled);
        store->setLoadProgress({});
        for (auto &change : changes)
            change.before = std::exchange(change.after, nullptr);
        QVERIFY(store->commit(changes));
        QVERIFY(open(book)->loadAll()->empty());
    }

    void cardsTooLargeForOneMessage()
    {
        const QString book = newBook();
        OtherProgram other(book);
        const QByteArray note(qsizetype(6) * 1024 * 1024, 'x'); // 24 of them are more than the bus lets through
        for (char uid = 'a'; uid < 'a' + 24; ++uid)
            QVERIFY(other.write(QByteArray(1, uid), "N:;A;;;|NOTE:" + note));
        const auto people = open(book)->loadAll();
        QVERIFY2(people, people ? "" : qPrintable(people.error().text));
        QCOMPARE(people->size(), std::size_t(24));
        QCOMPARE(people->back().uid, u("x"));
        QCOMPARE(people->back().record->text(kABNoteProperty)->size(), note.size());
    }

    void backupsComeBeforeTheFirstChange()
    {
        const QString book = newBook();
        const QString data = m_desktop.folder() + QStringLiteral("/backups");
        const auto openWith = [&book](const QString &folder) {
            return std::move(*EdsStore::open({book, folder, 20s}));
        };
        // The daemon keeps pictures in other files, which would be lost with it.
        OtherProgram other(book);
        QVERIFY(other.write("p", "N:;P;;;|PHOTO;ENCODING=b;TYPE=JPEG:/9j/4AAQ|LOGO;ENCODING=b;TYPE=JPEG:/9j/4BBQ"));
        QCOMPARE(other.text("p").count(";VALUE=uri:file://"), 2);
        QVERIFY(open(book)->commit({{u("u"), nullptr, m_a}}));
        for (int run = 0; run < 12; ++run) {
            const auto store = openWith(data);
            const auto saved = store->commit({{u("u"), run % 2 ? m_b : m_a, run % 2 ? m_a : m_b}});
            QVERIFY2(saved, saved ? "" : qPrintable(saved.error().text));
            QVERIFY(store->commit({{u("v") + QString::number(run), nullptr, m_a}}));
        }
        const QFileInfoList backups = QDir(folderOfBook(data, book) + u("/backups")).entryInfoList(QDir::Files);
        QCOMPARE(backups.size(), 10);
        QFile newest(backups.back().filePath());
        QVERIFY(newest.open(QIODevice::ReadOnly));
        const QByteArray cards = newest.readAll();
        QCOMPARE(cards.count("BEGIN:VCARD"), 13); // p, u, v0 to v10
        for (const char *part : {"N:;B;;;", "PHOTO;ENCODING=b:/9j/4AAQ\r\n", "LOGO;ENCODING=b:/9j/4BBQ\r\n"})
            QVERIFY2(cards.contains(part), cards.constData());
        QCOMPARE(newest.permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());

        // No backup, no change.
        QFile blocker(m_desktop.folder() + QStringLiteral("/blocker"));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        const auto store = openWith(blocker.fileName());
        const auto refused = store->commit({{u("u"), m_a, m_b}});
        QVERIFY(!refused);
        QCOMPARE(refused.error().kind, ErrorKind::Io);
        QVERIFY2(refused.error().text.contains(u("no backup")), qPrintable(refused.error().text));
        QVERIFY(*personOf(*store, u("u")) == *m_a);
    }

    void daemonKilledDuringASave()
    {
        const QString book = newBook();
        const auto store = open(book);
        const auto begun = store->commit({{u("gone"), nullptr, m_a}});
        QVERIFY2(begun, begun ? "" : qPrintable(begun.error().text));
        int whole = 0;
        for (int round = 0; round < 8; ++round) {
            const QString prefix = QStringLiteral("r%1-").arg(round);
            auto changes = additions(prefix, 1500, m_b);
            changes.push_back({u("gone"), round % 2 ? m_b : m_a, round % 2 ? m_a : m_b});
            std::thread killer([round] {
                std::this_thread::sleep_for(std::chrono::milliseconds(40 * (round + 1)));
                PrivateDesktop::killDaemon();
            });
            const auto saved = store->commit(changes);
            killer.join();
            const auto people = store->loadAll();
            QVERIFY2(people, people ? "" : qPrintable(people.error().text));
            const auto ofRound = std::ranges::count_if(
                *people, [&prefix](const StoredRecord &each) { return each.uid.startsWith(prefix); });
            QCOMPARE(ofRound, saved ? 1500 : 0);
            QVERIFY(*personOf(*store, u("gone")) == *(saved ? changes.back().after : changes.back().before));
            whole += saved ? 1 : 0;
            if (!saved)
                QVERIFY(store->commit({changes.back()}));
        }
        qInfo("saved %d of 8", whole);
        QVERIFY(!hasUnfinishedSaves(book));
    }

    void diskFullUnderTheDaemon()
    {
        const QString book = newBook();
        const auto store = open(book);
        QVERIFY(store->commit({{u("u"), nullptr, m_a}}));
        auto changes = additions(u("p"), 600, m_b); // more than one call
        changes.push_back({u("u"), m_a, m_b});
        m_desktop.setDiskFull(true);
        const auto refused = store->commit(changes);
        const auto people = store->loadAll();
        m_desktop.setDiskFull(false);
        QVERIFY(!refused && people);
        QVERIFY2(refused.error().text.contains(u("cannot be changed: ")), qPrintable(refused.error().text));
        QVERIFY(people->size() == 1 && *people->front().record == *m_a);
        QCOMPARE(store->history()->size(), std::size_t(1));
        QVERIFY(store->commit(changes));
        QCOMPARE(store->loadAll()->size(), std::size_t(601));

        // What another program left half done cannot be taken back before there is room.
        OtherProgram other(book);
        const QByteArray half = "N:;Half;;;";
        QVERIFY(EdsJournal(folderOfBook(m_desktop.dataFolder(), book))
                    .begin({{"u", other.text("u"), cardOf(half)}, {"v", {}, cardOf("N:;V;;;")}}));
        QVERIFY(other.write("u", half));
        m_desktop.setDiskFull(true);
        const auto later = open(book);
        const auto person = personOf(*later, u("u"));
        const auto waiting = later->commit({{u("p0000"), m_b, m_a}});
        m_desktop.setDiskFull(false);
        QCOMPARE(*person->text(kABFirstNameProperty), u("Half"));
        QVERIFY(!waiting);
        QVERIFY(*personOf(*later, u("u")) == *m_b);
        QVERIFY(later->commit({{u("p0000"), m_b, m_a}}));
        QVERIFY(!hasUnfinishedSaves(book));
    }

    void silentDaemon()
    {
        const auto store = open(newBook(), 3s); // enough for a busy machine to open the book
        QVERIFY(store->loadAll());
        const auto silent = whileSilent([&store] { return store->loadAll(); });
        QVERIFY(!silent);
        QCOMPARE(silent.error().kind, ErrorKind::Unavailable);
        QTRY_VERIFY(store->loadAll());

        // A caller may give up long before the limit.
        const auto patient = open(newBook(), 60s);
        patient->setLoadProgress([](qint64, qint64 total) { return total != 0; });
        QCOMPARE(whileSilent([&patient] { return patient->loadAll(); }).error().kind, ErrorKind::Cancelled);
        QTRY_VERIFY(store->loadAll());

        // So may a program that closes a book while it looks for changes.
        const auto watched = std::move(*ABAddressBook::open(open(newBook(), 60s)));
        watched->setChangeListener([] {});
        auto look = whileSilent([&watched] {
            auto begun = std::async(std::launch::async, [&watched] { return watched->refresh(); });
            begun.wait_for(300ms);
            watched->setChangeListener({});
            return begun;
        });
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
        QCOMPARE((*openStore(QString()))->name(), (*openStore(u("eds:")))->name());
        const auto books = knownBooks();
        QCOMPARE(std::ranges::count(books, true, &KnownBook::isDefault), 1);
        QVERIFY(std::ranges::find(books, u("eds:book1"), &KnownBook::where) != books.end());
    }

    /// Last, since there is no desktop afterwards.
    void theBusEnds()
    {
        const auto store = open(newBook());
        QVERIFY(store->commit({{u("u"), nullptr, m_a}}));
        m_desktop.killBus();
        const auto saved = store->commit({{u("u"), m_a, nullptr}});
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
