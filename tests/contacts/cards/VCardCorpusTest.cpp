// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
// Compares the reader with what independent parsers make of cards that real programs wrote. The cards are not part of
// the project; without them the test is skipped.
#include "contacts/cards/VCardReader.h"
#include "contacts/cards/VCardWriter.h"

#include <QDir>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

namespace {

struct ReadFile
{
    std::vector<ImportedRecord> people;
    std::vector<ImportProblem> problems;

    qsizetype groups() const
    {
        return std::ranges::count(problems, ImportProblem::Kind::NotAPerson, &ImportProblem::kind);
    }
};

ReadFile readCards(const QByteArray &data)
{
    ReadFile file;
    VCardReader reader(data);
    for (ImportedRecord imported = reader.next(); imported.record; imported = reader.next())
        file.people.push_back(imported);
    file.problems = reader.takeProblems();
    return file;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A value as the expectations have it: trimmed, line ends alike, no blanks around commas.
QString compared(QString value)
{
    static const QRegularExpression lineEnd(QStringLiteral("\r\n|\r"));
    static const QRegularExpression comma(QStringLiteral("\\s*,\\s*"));
    return value.replace(lineEnd, QStringLiteral("\n")).replace(comma, QStringLiteral(",")).trimmed();
}

QString comparedPhone(QString value)
{
    return compared(value.startsWith(QLatin1String("tel:"), Qt::CaseInsensitive) ? value.sliced(4) : value);
}

/// A list of texts or one text, as one text.
QString joined(const QJsonValue &value)
{
    QStringList texts;
    for (const auto &text : value.toArray())
        texts << text.toString();
    return compared(value.isArray() ? texts.join(u',') : value.toString());
}

QString textOf(const PersonRecord &record, ABProperty property)
{
    const QString *text = record.text(property);
    return text ? compared(*text) : QString();
}

QStringList textsOf(const PersonRecord &record, ABProperty property)
{
    QStringList texts;
    if (const ABMultiValue *value = record.multiValue(property)) {
        for (const auto &entry : value->entries())
            texts << compared(entry.text());
    }
    return texts;
}

QStringList texts(const QJsonValue &array, QString (*adapt)(QString))
{
    QStringList texts;
    for (const auto &value : array.toArray())
        texts << adapt(value.toString());
    return texts;
}

/// The first of the written birthdays that is a full date or lacks only its year.
QDate expectedBirthday(const QJsonArray &written)
{
    static const QRegularExpression form(QStringLiteral("^(\\d{4}|-)-?(\\d\\d)-?(\\d\\d)([T ].*)?$"));
    for (const auto &value : written) {
        const auto match = form.match(value.toString());
        const QString year = match.captured(1);
        const QDate date(
            year == QLatin1String("-") ? 1604 : year.toInt(), match.captured(2).toInt(), match.captured(3).toInt());
        if (match.hasMatch() && date.isValid() && date.year() > 0)
            return date;
    }
    return {};
}

/// Words in the expectations that say of a field that readers may differ.
bool isFree(const QJsonObject &card, const QString &field)
{
    return std::ranges::any_of(card[QLatin1String("ambiguous")].toArray(), [&field](const QJsonValue &reason) {
        const QString text = reason.toString();
        return text.contains(QLatin1String("charset")) || text.contains(field + u':') || text.contains(field + u' ');
    });
}

/// Names in a file that the record has a place for; their lines may be written in another form or not at all.
bool isModelled(const QString &name)
{
    static const QRegularExpression modelled(QStringLiteral(
        "^(BEGIN|END|VERSION|N|FN|ORG|TITLE|NICKNAME|NOTE|BDAY|UID|EMAIL|TEL|URL|ADR|X-ABADR|X-ABLABEL|PHOTO)$"));
    return modelled.match(name).hasMatch();
}

QSet<QString> unmodelledNames(const QByteArray &card)
{
    static const QRegularExpression line(
        QStringLiteral("^(?:[A-Za-z0-9-]+\\.)?([A-Za-z][A-Za-z0-9/_-]*)[;:]"), QRegularExpression::MultilineOption);
    QSet<QString> names;
    auto matches = line.globalMatch(QString::fromLatin1(card).replace(u'\r', u'\n'));
    while (matches.hasNext()) {
        const QString name = matches.next().captured(1).toUpper();
        if (!isModelled(name))
            names.insert(name);
    }
    return names;
}

} // namespace

class VCardCorpusTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void people_data() { listFiles(); }
    void people();
    void everythingSurvives_data() { listFiles(); }
    void everythingSurvives();

private:
    void listFiles();
    void compareCard(const PersonRecord &record, const QJsonObject &card);
    void compareAddresses(const PersonRecord &record, const QJsonObject &card);

    QString m_folder;
};

void VCardCorpusTest::initTestCase()
{
    m_folder = qEnvironmentVariable("PEOPLENOOK_VCF_CORPUS", QStringLiteral("../shared/vcf"));
    if (!QDir(m_folder + QStringLiteral("/oracle")).exists())
        QSKIP("no collection of real cards here; PEOPLENOOK_VCF_CORPUS may name its folder");
}

void VCardCorpusTest::listFiles()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QJsonObject>("expected");
    QDirIterator files(m_folder + QStringLiteral("/oracle"), {QStringLiteral("*.json")});
    while (files.hasNext()) {
        const QJsonObject expected = QJsonDocument::fromJson(contentOf(files.next())).object();
        const QString name = expected[QLatin1String("file")].toString();
        QTest::newRow(qPrintable(name)) << contentOf(m_folder + u'/' + name) << expected;
    }
}

void VCardCorpusTest::people()
{
    QFETCH(QByteArray, content);
    QFETCH(QJsonObject, expected);
    QVERIFY(!content.isEmpty());
    const ReadFile file = readCards(content);
    const QJsonArray cards = expected[QLatin1String("cards")].toArray();
    // Groups are cards, but no people.
    const auto count = static_cast<qsizetype>(file.people.size()) + file.groups();
    if (count != cards.size()) {
        QVERIFY2(
            expected[QLatin1String("acceptable_counts")].toArray().contains(count), qPrintable(QString::number(count)));
        return;
    }
    std::size_t next = 0;
    for (const auto &card : cards) {
        const auto isOfCard = [&](const ImportProblem &problem) {
            return problem.kind == ImportProblem::Kind::NotAPerson
                && problem.reason
                == QStringLiteral("group \"%1\"").arg(card[QLatin1String("fn")].toArray().first().toString());
        };
        if (std::ranges::any_of(file.problems, isOfCard))
            continue;
        QVERIFY(next < file.people.size());
        compareCard(*file.people[next++].record, card.toObject());
        if (QTest::currentTestFailed())
            return;
    }
    QCOMPARE(next, file.people.size());
}

void VCardCorpusTest::compareCard(const PersonRecord &record, const QJsonObject &card)
{
    const QJsonObject name = card[QLatin1String("n")].toObject();
    const QList<std::pair<QLatin1String, ABProperty>> parts{{QLatin1String("family"), kABLastNameProperty},
        {QLatin1String("given"), kABFirstNameProperty}, {QLatin1String("middle"), kABMiddleNameProperty},
        {QLatin1String("prefix"), kABTitleProperty}, {QLatin1String("suffix"), kABSuffixProperty}};
    bool hasName = false;
    for (const auto &[key, property] : parts)
        hasName = hasName || !joined(name[key]).isEmpty();
    for (const auto &[key, property] : parts) {
        if (hasName && !isFree(card, QStringLiteral("N")))
            QCOMPARE(textOf(record, property), joined(name[key]));
    }
    QCOMPARE(textsOf(record, kABEmailProperty), texts(card[QLatin1String("emails")], compared));
    QCOMPARE(textsOf(record, kABPhoneProperty), texts(card[QLatin1String("phones")], comparedPhone));
    const QJsonArray organization = card[QLatin1String("org")].toArray().first().toArray();
    QCOMPARE(textOf(record, kABOrganizationProperty), compared(organization.first().toString()));
    QCOMPARE(textOf(record, kABDepartmentProperty),
        compared(organization.size() > 1 ? organization[1].toString() : QString()));
    QCOMPARE(textOf(record, kABJobTitleProperty), compared(card[QLatin1String("title")].toArray().first().toString()));
    static const QRegularExpression emptyLines(QStringLiteral("\\s*\n\\s*\n\\s*")); // what is expected is trimmed
    const QString notes = texts(card[QLatin1String("note")], compared).join(QLatin1String("\n\n"));
    QCOMPARE(textOf(record, kABNoteProperty).replace(emptyLines, QStringLiteral("\n\n")),
        QString(notes).replace(emptyLines, QStringLiteral("\n\n")));
    // Several lines of nicknames are lists of their own; the record has the first.
    const QString nicknames = joined(card[QLatin1String("nickname")]);
    QVERIFY(nicknames.startsWith(textOf(record, kABNicknameProperty)));
    QCOMPARE(textOf(record, kABNicknameProperty).isEmpty(), nicknames.isEmpty());
    QCOMPARE(record.birthday().value_or(QDate()), expectedBirthday(card[QLatin1String("bday")].toArray()));
    compareAddresses(record, card);
}

void VCardCorpusTest::compareAddresses(const PersonRecord &record, const QJsonObject &card)
{
    const QJsonArray addresses = card[QLatin1String("addresses")].toArray();
    const ABMultiValue *value = record.multiValue(kABAddressProperty);
    if (!isFree(card, QStringLiteral("ADR")))
        QCOMPARE(value ? value->count() : 0, addresses.size());
    if (!value || isFree(card, QStringLiteral("ADR")))
        return;
    const QList<std::pair<QLatin1String, ABKey>> parts{{QLatin1String("street"), kABAddressStreetKey},
        {QLatin1String("city"), kABAddressCityKey}, {QLatin1String("region"), kABAddressStateKey},
        {QLatin1String("zip"), kABAddressZIPKey}, {QLatin1String("country"), kABAddressCountryKey}};
    for (qsizetype i = 0; i < addresses.size(); ++i) {
        for (const auto &[key, part] : parts) {
            const QString *text = value->entries()[static_cast<std::size_t>(i)].dictionary().valueForKey(part);
            QCOMPARE(text ? compared(*text) : QString(), joined(addresses[i].toObject()[key]));
        }
    }
}

void VCardCorpusTest::everythingSurvives()
{
    QFETCH(QByteArray, content);
    const ReadFile file = readCards(content);
    for (const VCardForm version : {VCardForm::V3, VCardForm::V4}) {
        QByteArray written;
        for (const ImportedRecord &person : file.people) {
            const QByteArray card = vCardFromRecord(person.uid, *person.record, version);
            const ReadFile again = readCards(card);
            QCOMPARE(again.people.size(), std::size_t(1));
            QCOMPARE(again.problems.size(), std::size_t(0));
            QCOMPARE(again.people.front().uid, person.uid);
            QVERIFY2(*again.people.front().record == *person.record, card.constData());
            written += card;
        }
        const bool isReadWhole = std::ranges::all_of(
            file.problems, [](const ImportProblem &problem) { return problem.kind == ImportProblem::Kind::LostLine; });
        if (isReadWhole && !file.people.empty()) {
            const QSet<QString> lost = unmodelledNames(content) - unmodelledNames(written);
            QVERIFY2(lost.isEmpty(), qPrintable(QStringList(lost.values()).join(u' ')));
        }
    }
}

QTEST_GUILESS_MAIN(VCardCorpusTest)
#include "VCardCorpusTest.moc"
