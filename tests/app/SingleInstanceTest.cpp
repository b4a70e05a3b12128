// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/SingleInstance.h"

#include <QCoreApplication>
#include <QDir>
#include <QLocalSocket>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <future>
#include <iostream>

using namespace std::chrono_literals;

class SingleInstanceTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_book;

    /// Other starts of the application, all at once. On threads: the first one answers on this one.
    void startAgain(const QString &where, const std::vector<QStringList> &files)
    {
        std::vector<std::future<bool>> answers;
        for (const QStringList &each : files)
            answers.push_back(std::async(std::launch::async,
                [=, folder = m_folder->path()] { return SingleInstance(where, folder).handOver(each); }));
        for (auto &answer : answers) {
            QTRY_COMPARE(answer.wait_for(0s), std::future_status::ready);
            QVERIFY(answer.get());
        }
    }

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_book = m_folder->filePath(QStringLiteral("data/people.sqlite"));
    }

    void laterStartsHandTheirFilesOver()
    {
        SingleInstance first(m_book, m_folder->path());
        QVERIFY(!first.handOver({}));
        QSignalSpy calls(&first, &SingleInstance::calledAgain);
        const QFile::Permissions others = QFileInfo(first.socketPath()).permissions()
            & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther);
        QVERIFY(!others);

        std::vector<QStringList> starts;
        QSet<QStringList> wanted;
        for (int i = 0; i < 8; ++i) {
            starts.push_back({QStringLiteral("a name %1.vcf").arg(i), QStringLiteral("/there/ü.vcf")});
            wanted += {QDir::current().filePath(starts.back()[0]), starts.back()[1]};
        }
        startAgain(m_book, starts);
        QTRY_COMPARE(calls.size(), 8);
        QSet<QStringList> found;
        for (const QList<QVariant> &call : calls)
            found += call[0].toStringList();
        QCOMPARE(found, wanted);

        // The address book is made by then; a path through a link is the same address book.
        QDir().mkpath(QFileInfo(m_book).path());
        QFile file(m_book);
        QVERIFY(file.open(QIODevice::WriteOnly));
        const QString link = m_folder->filePath(QStringLiteral("link"));
        QVERIFY(QFile::link(QFileInfo(m_book).path(), link));
        startAgain(link + QStringLiteral("/../link/people.sqlite"), {QStringList()});
        QTRY_COMPARE(calls.size(), 9);
        QCOMPARE(calls[8][0].toStringList(), QStringList());
    }

    void otherAddressBooksAndTheNextStartAreFree()
    {
        {
            SingleInstance first(m_book, m_folder->path());
            QVERIFY(!first.handOver({}));
            SingleInstance other(m_book + QStringLiteral("2"), m_folder->path());
            QVERIFY(!other.handOver({}));
            QVERIFY(first.place() == 0 && other.place() == 1);
        }
        SingleInstance next(m_book, m_folder->path());
        QVERIFY(!next.handOver({}, 0ms));
    }

    void withoutARuntimeFolderALockOfOursIsUsed()
    {
        const QByteArray before = qgetenv("XDG_RUNTIME_DIR");
        qputenv("XDG_RUNTIME_DIR", "/dev/null/none");
        qputenv("XDG_DATA_HOME", QFile::encodeName(m_folder->path()));
        const QString socket = SingleInstance(m_book).socketPath();
        qunsetenv("XDG_DATA_HOME");
        qputenv("XDG_RUNTIME_DIR", before);
        QCOMPARE(QFileInfo(socket).path(), m_folder->filePath(QStringLiteral("peoplenook")));
        QVERIFY(QFileInfo(QFileInfo(socket).path()).isDir());
    }

    void killedApplicationIsNoObstacle()
    {
        QProcess killed;
        killed.start(QCoreApplication::applicationFilePath(), {QStringLiteral("hold"), m_book, m_folder->path()});
        QVERIFY(killed.waitForReadyRead());
        QVERIFY(!SingleInstance(m_book, m_folder->path()).handOver({}, 0ms)); // it runs, but does not answer
        killed.kill();
        QVERIFY(killed.waitForFinished());

        SingleInstance next(m_book, m_folder->path());
        QVERIFY(QFileInfo::exists(next.socketPath()));
        QVERIFY(!next.handOver({}, 0ms));
        QSignalSpy calls(&next, &SingleInstance::calledAgain);
        startAgain(m_book, {QStringList()});
        QTRY_COMPARE(calls.size(), 1);
    }

    void halfAMessageIsNoCall()
    {
        SingleInstance first(m_book, m_folder->path());
        QVERIFY(!first.handOver({}));
        QSignalSpy calls(&first, &SingleInstance::calledAgain);
        QLocalSocket socket;
        socket.connectToServer(first.socketPath());
        QVERIFY(socket.waitForConnected());
        socket.write("\0\0\0\5ab", 6);
        QVERIFY(socket.waitForBytesWritten());
        socket.disconnectFromServer();
        startAgain(m_book, {QStringList()});
        QTRY_COMPARE(calls.size(), 1);
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QStringLiteral("hold")) {
        SingleInstance instance(arguments[2], arguments[3]);
        std::cout << instance.handOver({}) << std::endl;
        for (;;)
            std::this_thread::sleep_for(1h);
    }
    SingleInstanceTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "SingleInstanceTest.moc"
