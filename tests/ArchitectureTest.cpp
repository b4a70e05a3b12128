// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QDirIterator>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <map>

/// Reads every #include of src/ and holds it against the floors of the architecture: linking alone does not keep a
/// folder from including what stands above it, as all headers of the project and of Qt share one include root.
class ArchitectureTest : public QObject
{
    Q_OBJECT

private:
    /// The lines of src/CMakeLists.txt, lowest floor first. A folder may include those before its own; folders of one
    /// line do not know each other.
    QList<QStringList> m_floors;

    /// Outside headers that only some folders or files may know.
    const std::map<QString, QStringList> m_onlyIn{
        {QStringLiteral("sqlite3.h"), {QStringLiteral("contacts/stores/sqlite")}},
        {QStringLiteral("SQLiteCpp/"), {QStringLiteral("contacts/stores/sqlite")}},
        {QStringLiteral("libebook"), {QStringLiteral("contacts/stores/eds")}},
        {QStringLiteral("CLI/"), {QStringLiteral("cli")}},
        {QStringLiteral("simdjson.h"), {QStringLiteral("contacts/cards")}},
        {QStringLiteral("snappy.h"), {QStringLiteral("export/office")}},
        {QStringLiteral("phonenumbers/"), {QStringLiteral("src/likeness/PhoneLines.cpp")}},
        {QStringLiteral("unicode/"), {QStringLiteral("src/likeness/Words.cpp")}},
        {QStringLiteral("QFileDialog"), {QStringLiteral("src/app/look/FileDialog.cpp")}},
    };

    /// From 0; -1 for what is no folder of src/.
    qsizetype floorOf(const QString &folder) const
    {
        const auto floor = std::ranges::find_if(m_floors, [&](const auto &line) { return line.contains(folder); });
        return floor == m_floors.end() ? -1 : floor - m_floors.begin();
    }

    static bool isWindowHeader(const QString &header)
    {
        static const QRegularExpression name(QStringLiteral(
            "^Q(Widget|Application|GuiApplication|Window|Image|Pixmap|Icon|Color|Font|Painter|Text|Action|Undo|Dialog|"
            "Abstract(Button|ItemView)|(Tree|Table|List)(View|Widget)|Label|Push|Line|Menu|Message)"));
        return header.contains(QStringLiteral("QtWidgets")) || header.contains(QStringLiteral("QtGui"))
            || (name.match(header).hasMatch() && !header.startsWith(QStringLiteral("QTextStream")));
    }

private Q_SLOTS:
    void initTestCase()
    {
        QFile file(QStringLiteral("src/CMakeLists.txt"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString list =
            QString::fromUtf8(file.readAll()).section(QStringLiteral("foreach(folder"), 1).section(u')', 0, 0);
        QStringList stores = QDir(QStringLiteral("src/contacts/stores")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        stores.removeOne(QStringLiteral("open"));
        stores.replaceInStrings(QRegularExpression(QStringLiteral("^")), QStringLiteral("contacts/stores/"));
        for (QString line : list.split(u'\n', Qt::SkipEmptyParts))
            m_floors += line.replace(QStringLiteral("${store_folders}"), stores.join(u' ')).simplified().split(u' ');
    }

    void includesGoDownwards()
    {
        static const QRegularExpression include(
            QStringLiteral("^\\s*#\\s*include\\s*([<\"])([^>\"]+)[>\"]"), QRegularExpression::MultilineOption);
        QDirIterator files(QStringLiteral("src"), {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
            QDirIterator::Subdirectories);
        int seen = 0;
        QStringList faults;
        while (files.hasNext()) {
            const QString path = files.next();
            const QString folder = QFileInfo(path).path().mid(4);
            QVERIFY2(floorOf(folder) >= 0, qPrintable(path + QStringLiteral(": no floor names this folder")));
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadOnly));
            auto matches = include.globalMatch(QString::fromUtf8(file.readAll()));
            while (matches.hasNext()) {
                const auto match = matches.next();
                const QString header = match.captured(2);
                ++seen;
                const QString target = QFileInfo(header).path();
                if (match.captured(1) == u'"' && target != folder
                    && (floorOf(target) < 0 || floorOf(target) >= floorOf(folder)))
                    faults += path + QStringLiteral(" includes ") + header;
                for (const auto &[prefix, owners] : m_onlyIn) {
                    if (header.startsWith(prefix) && !owners.contains(folder) && !owners.contains(path))
                        faults += path + QStringLiteral(" includes ") + header;
                }
                if (isWindowHeader(header) && !folder.startsWith(QStringLiteral("app/")))
                    faults += path + QStringLiteral(" includes the window header ") + header;
            }
        }
        QVERIFY(seen > 100);
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
    }
};

QTEST_APPLESS_MAIN(ArchitectureTest)
#include "ArchitectureTest.moc"
