// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/office/IwaPackage.h"
#include "support/OtherReader.h"

#include <QBuffer>
#include <QJsonArray>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QDateTime kTime(QDate(2026, 3, 4), QTime(5, 6, 8), Qt::UTC);

QByteArray noise(qsizetype size)
{
    QRandomGenerator random(7);
    QByteArray bytes(size, '\0');
    for (char &byte : bytes)
        byte = char(random.bounded(256));
    return bytes;
}

/// Messages of sizes about those of a block, which compress well, badly or not at all, in three components that point
/// to one another.
struct SampleObject
{
    quint64 id;
    quint32 type;
    ProtobufMessage message;
    QByteArray component;
};

std::vector<SampleObject> sampleObjects()
{
    const auto blob = [](const QByteArray &bytes) { return ProtobufMessage().bytes(3, bytes); };
    return {
        {1, 10000, ProtobufMessage().reference(2, 4).message(5, ProtobufMessage().reference(1, 6)), "Document"},
        {3, 401, {}, ""},
        {4, 2022, blob(QByteArray(65'528, 'x')), "Styles"},
        {5, 2022, blob(noise(65'536)), ""},
        {6, 6002, blob(noise(300'000)).reference(4, 1).reference(5, 1), "Tables/Tile"},
        {7, 6005, blob(QByteArray(1'000'000, 'y')).text(4, u"\U0001F600"), ""},
    };
}

/// Every other object in pieces.
Result<void> writeSample(QIODevice &target)
{
    IwaPackage package(kTime, QStringLiteral("sample"));
    for (const SampleObject &object : sampleObjects()) {
        if (object.id > 2)
            package.newId();
        if (object.component.startsWith("Tables"))
            package.beginComponent(object.id, object.component, IwaPackage::Naming::ByLocatorAndId);
        else if (!object.component.isEmpty())
            package.beginComponent(object.id, object.component);
        const QByteArray &data = object.message.data();
        const auto inPieces = [&data](const IwaPackage::Sink &sink) {
            for (qsizetype at = 0; at < data.size(); at += 1000)
                sink(QByteArrayView(data).sliced(at, qMin<qsizetype>(1000, data.size() - at)));
        };
        if (object.id % 2 == 0)
            package.addLarge(object.id, object.type, object.message.references(), inPieces);
        else
            package.add(object.id, object.type, object.message);
    }
    return package.writeTo(target);
}

} // namespace

class IwaPackageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// The examples of the encoding's own documentation, and its limits.
    void messages()
    {
        QCOMPARE(ProtobufMessage().number(1, 150).data().toHex(), "089601");
        QCOMPARE(ProtobufMessage().text(2, u"testing").data().toHex(), "120774657374696e67");
        QCOMPARE(ProtobufMessage().message(3, ProtobufMessage().number(1, 150)).data().toHex(), "1a03089601");
        QCOMPARE(ProtobufMessage().packed(6, {3, 270, 86942}).data().toHex(), "3206038e029ea705");
        QCOMPARE(ProtobufMessage().number(16, ~quint64(0)).data().toHex(), "8001ffffffffffffffffff01");
        QCOMPARE(ProtobufMessage().real32(1, -2).real64(2, 0.5).data().toHex(), "0d000000c011000000000000e03f");
        const ProtobufMessage inner = ProtobufMessage().reference(1, 300);
        const ProtobufMessage outer = ProtobufMessage().reference(1, 7).message(2, inner);
        QCOMPARE(outer.references(), (std::vector<quint64>{7, 300}));
        QCOMPARE(outer.data().toHex(), "0a02080712050a0308ac02");
    }

    void anotherReaderFindsAllObjects()
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("sample.numbers")));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(writeSample(file));
        file.close();
        const auto read = readBy(QStringLiteral("iwa_decode.py"), {QStringLiteral("objects"), file.fileName()});
        SKIP_WITHOUT(read);
        const QJsonArray lines = read.lines();
        const auto expected = sampleObjects();
        QCOMPARE(lines.size(), qsizetype(expected.size() + 1)); // and the package's own description
        for (std::size_t i = 0; i < expected.size(); ++i) {
            const QJsonArray object = lines.at(qsizetype(i)).toArray();
            QCOMPARE(quint64(object.at(0).toInteger()), expected[i].id);
            QCOMPARE(quint32(object.at(1).toInteger()), expected[i].type);
            QCOMPARE(object.at(2).toString().toLatin1(), expected[i].message.data().toHex());
        }
    }

    void noRoomForTheTemporaryFileIsReported()
    {
        const QByteArray before = qgetenv("TMPDIR");
        qputenv("TMPDIR", "/proc"); // not even root makes files there
        QBuffer buffer;
        buffer.open(QIODevice::ReadWrite);
        const auto result = writeSample(buffer);
        before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before);
        QVERIFY(!result);
        QVERIFY(result.error().text.startsWith(QStringLiteral("a temporary file could not be written")));
        QCOMPARE(buffer.size(), 0);
    }

    void messageThatChangesWhileItIsWrittenIsRefused()
    {
        QBuffer buffer;
        buffer.open(QIODevice::ReadWrite);
        IwaPackage package(kTime, QString());
        package.beginComponent(IwaPackage::kDocumentId, "Document");
        QByteArray content;
        package.addLarge(
            IwaPackage::kDocumentId, 1, {}, [&content](const IwaPackage::Sink &sink) { sink(content += '1'); });
        QVERIFY(!package.writeTo(buffer));
        QCOMPARE(buffer.size(), 0);
    }
};

QTEST_GUILESS_MAIN(IwaPackageTest)
#include "IwaPackageTest.moc"
