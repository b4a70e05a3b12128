// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QDirIterator>
#include <QRegularExpression>
#include <QTest>

#include <map>

/// Reads every #include of src/ and holds it against the rows of the architecture: linking alone does not keep a folder
/// from including what stands above it, as all headers of the project and of Qt share one include root.
class ArchitectureTest : public QObject
{
    Q_OBJECT

private:
    /// For each folder of src/, the other folders it may include. A folder that is not here must not exist.
    const std::map<QString, QStringList> m_mayInclude{
        {QStringLiteral("base"), {}},
        {QStringLiteral("contacts/record"), {QStringLiteral("base")}},
        {QStringLiteral("export/iwa"), {QStringLiteral("base")}},
        {QStringLiteral("contacts/jsonl"), {QStringLiteral("base"), QStringLiteral("contacts/record")}},
        {QStringLiteral("contacts/vcard"),
            {QStringLiteral("base"), QStringLiteral("contacts/record"), QStringLiteral("contacts/jsonl")}},
        {QStringLiteral("contacts"),
            {QStringLiteral("base"), QStringLiteral("contacts/record"), QStringLiteral("contacts/jsonl"),
                QStringLiteral("contacts/vcard")}},
        {QStringLiteral("contacts/sqlite"),
            {QStringLiteral("base"), QStringLiteral("contacts/record"), QStringLiteral("contacts/jsonl"),
                QStringLiteral("contacts")}},
        {QStringLiteral("contacts/eds"),
            {QStringLiteral("base"), QStringLiteral("contacts/record"), QStringLiteral("contacts/vcard"),
                QStringLiteral("contacts")}},
        {QStringLiteral("contacts/open"),
            {QStringLiteral("base"), QStringLiteral("contacts/record"), QStringLiteral("contacts"),
                QStringLiteral("contacts/sqlite"), QStringLiteral("contacts/eds")}},
        {QStringLiteral("table/dictionary"),
            {QStringLiteral("base"), QStringLiteral("contacts/record"), QStringLiteral("contacts")}},
        {QStringLiteral("table/commit"),
            {QStringLiteral("base"), QStringLiteral("contacts/record"), QStringLiteral("contacts"),
                QStringLiteral("table/dictionary")}},
        {QStringLiteral("scan"),
            {QStringLiteral("base"), QStringLiteral("contacts/record"), QStringLiteral("contacts")}},
        {QStringLiteral("fix"),
            {QStringLiteral("base"), QStringLiteral("contacts/record"), QStringLiteral("contacts"),
                QStringLiteral("table/dictionary"), QStringLiteral("scan")}},
        {QStringLiteral("results"),
            {QStringLiteral("base"), QStringLiteral("contacts/record"), QStringLiteral("contacts"),
                QStringLiteral("table/dictionary"), QStringLiteral("scan"), QStringLiteral("fix")}},
        {QStringLiteral("table"),
            {QStringLiteral("base"), QStringLiteral("contacts/record"), QStringLiteral("contacts"),
                QStringLiteral("table/dictionary"), QStringLiteral("table/commit")}},
        {QStringLiteral("export"),
            {QStringLiteral("base"), QStringLiteral("contacts/record"), QStringLiteral("contacts"),
                QStringLiteral("table/dictionary"), QStringLiteral("table"), QStringLiteral("export/iwa")}},
        {QStringLiteral("cli"),
            {QStringLiteral("base"), QStringLiteral("contacts/record"), QStringLiteral("contacts/jsonl"),
                QStringLiteral("contacts"), QStringLiteral("contacts/open"), QStringLiteral("scan"),
                QStringLiteral("fix"), QStringLiteral("results"), QStringLiteral("table/dictionary"),
                QStringLiteral("table"), QStringLiteral("export")}},
        {QStringLiteral("app"),
            {QStringLiteral("base"), QStringLiteral("contacts/record"), QStringLiteral("contacts"),
                QStringLiteral("contacts/open"), QStringLiteral("scan"), QStringLiteral("fix"),
                QStringLiteral("results"), QStringLiteral("table/dictionary"), QStringLiteral("table"),
                QStringLiteral("export")}},
    };

    /// Outside headers that only some folders or files may know.
    const std::map<QString, QStringList> m_onlyIn{
        {QStringLiteral("sqlite3.h"), {QStringLiteral("contacts/sqlite")}},
        {QStringLiteral("SQLiteCpp/"), {QStringLiteral("contacts/sqlite"), QStringLiteral("contacts/eds")}},
        {QStringLiteral("libebook"), {QStringLiteral("contacts/eds")}},
        {QStringLiteral("CLI/"), {QStringLiteral("cli")}},
        {QStringLiteral("simdjson.h"), {QStringLiteral("contacts/jsonl")}},
        {QStringLiteral("snappy.h"), {QStringLiteral("export/iwa")}},
        {QStringLiteral("QFileDialog"), {QStringLiteral("src/app/FileDialog.cpp")}},
    };

    static bool isWindowHeader(const QString &header)
    {
        static const QRegularExpression name(QStringLiteral(
            "^Q(Widget|Application|GuiApplication|Window|Image|Pixmap|Icon|Color|Font|Painter|Text|Action|Undo|Dialog|"
            "Abstract(Button|ItemView)|(Tree|Table|List)(View|Widget)|Label|Push|Line|Menu|Message)"));
        return header.contains(QStringLiteral("QtWidgets")) || header.contains(QStringLiteral("QtGui"))
            || (name.match(header).hasMatch() && !header.startsWith(QStringLiteral("QTextStream")));
    }

private Q_SLOTS:
    void includesFollowTheRows()
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
            QVERIFY2(m_mayInclude.contains(folder), qPrintable(path + QStringLiteral(": no row names this folder")));
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadOnly));
            auto matches = include.globalMatch(QString::fromUtf8(file.readAll()));
            while (matches.hasNext()) {
                const auto match = matches.next();
                const QString header = match.captured(2);
                ++seen;
                const QString target = QFileInfo(header).path();
                if (match.captured(1) == u'"' && target != folder && !m_mayInclude.at(folder).contains(target))
                    faults += path + QStringLiteral(" includes ") + header;
                for (const auto &[prefix, owners] : m_onlyIn) {
                    if (header.startsWith(prefix) && !owners.contains(folder) && !owners.contains(path))
                        faults += path + QStringLiteral(" includes ") + header;
                }
                if (isWindowHeader(header) && folder != QStringLiteral("app"))
                    faults += path + QStringLiteral(" includes the window header ") + header;
            }
        }
        QVERIFY(seen > 100);
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
    }

    void rowsHaveNoCircle()
    {
        for (const auto &[folder, lower] : m_mayInclude) {
            for (const QString &other : lower)
                QVERIFY2(!m_mayInclude.at(other).contains(folder), qPrintable(folder + u' ' + other));
        }
    }
};

QTEST_APPLESS_MAIN(ArchitectureTest)
#include "ArchitectureTest.moc"
