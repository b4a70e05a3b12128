// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/RecordImporter.h"

#include "contacts/cards/JsonLinesReader.h"
#include "contacts/cards/VCardReader.h"
#include "contacts/model/ContentHash.h"

#include <QHash>
#include <QSet>
#include <QUuid>

#include <algorithm>

namespace {

/// Under which uids are made from contents. Changing it would make old imports unknown.
const QUuid kContentNamespace(0x6f1d3c52, 0x8a0b, 0x4e57, 0x9c, 0x33, 0x51, 0xd2, 0x7e, 0x0a, 0x64, 0xb8);

/// How often progress is told; telling it for each of a million records would cost more than reading them.
constexpr int kRecordsPerProgress = 256;

QString uidFor(const QByteArray &content)
{
    return QUuid::createUuidV5(kContentNamespace, content).toString(QUuid::WithoutBraces).toUpper();
}

/// Lines that every program writes anew, so they say nothing about the person.
bool isStamp(const KeptLine &line)
{
    const auto isNamed = [&line](QStringView name) {
        return line.text.startsWith(name, Qt::CaseInsensitive) && line.text.size() > name.size()
            && (line.text[name.size()] == u':' || line.text[name.size()] == u';');
    };
    return isNamed(u"REV") || isNamed(u"PRODID");
}

/// Whether @p stored tells everything that @p imported does.
bool covers(const PersonRecord &stored, const PersonRecord &imported)
{
    if (!stored.hasSameValues(imported))
        return false;
    QSet<std::pair<QString, QString>> storedLines;
    for (const KeptLine &line : stored.keptLines())
        storedLines.insert({line.text, line.basis});
    return std::ranges::all_of(imported.keptLines(), [&storedLines](const KeptLine &line) {
        return isStamp(line) || storedLines.contains({line.text, line.basis});
    });
}

} // namespace

RecordFormat formatOfContent(const QByteArray &content)
{
    const qsizetype start = content.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    const auto first = std::find_if(
        content.begin() + start, content.end(), [](char c) { return c != ' ' && c != '\t' && c != '\r' && c != '\n'; });
    return first != content.end() && *first == '{' ? RecordFormat::JsonLines : RecordFormat::VCard;
}

std::unique_ptr<RecordSource> recordSource(const QByteArray &content, RecordFormat format)
{
    if (format == RecordFormat::JsonLines)
        return std::make_unique<JsonLinesReader>(content);
    return std::make_unique<VCardReader>(content);
}

RecordImporter::RecordImporter(ABAddressBook &book, OnOtherContent onOtherContent)
    : m_book(book), m_onOtherContent(onOtherContent)
{ }

bool RecordImporter::addAll(RecordSource &source, const Progress &progress)
{
    QHash<QByteArray, quint64> timesSeen; // equal people without a uid are as many people as the file says
    for (int count = 1;; ++count) {
        const ImportedRecord imported = source.next();
        if (!imported.record)
            return true;
        QString uid = imported.uid;
        if (uid.isNull()) {
            const QByteArray hash = contentHash(*imported.record);
            uid = uidFor(hash + QByteArray::number(timesSeen[hash]++));
        }
        add(imported, uid);
        if (count % kRecordsPerProgress == 0 && progress && !progress(source.bytesRead(), source.totalBytes()))
            return false;
    }
}

void RecordImporter::add(const ImportedRecord &imported, const QString &uid)
{
    const ABPersonPtr present = m_book.personWithUniqueId(uid);
    if (!present) {
        m_added.push_back(std::make_shared<ABPerson>(uid, imported.record));
        m_book.addRecord(m_added.back());
        ++m_imported;
        return;
    }
    const PersonRecordPtr stored = present->record();
    if (covers(*stored, *imported.record)) {
        ++m_alreadyThere;
        return;
    }
    if (m_onOtherContent == OnOtherContent::AddUnderNewUid) {
        add(imported, uidFor(uid.toUtf8() + contentHash(*imported.record)));
        return;
    }
    auto replacement = std::make_shared<PersonRecord>(*imported.record);
    if (replacement->keptLines().empty())
        replacement->setKeptLines(stored->keptLines()); // JSON cannot carry them, which is no reason to lose them
    present->replaceRecord(replacement);
    ++m_imported;
}

namespace {

/// Records that were read before.
class ReadRecords : public RecordSource
{
public:
    ImportedRecord next() override { return m_next < m_records.size() ? m_records[m_next++] : ImportedRecord(); }
    std::vector<ImportProblem> takeProblems() override { return {}; }
    qint64 bytesRead() const override { return 0; }
    qint64 totalBytes() const override { return 0; }

    void append(ImportedRecord record) { m_records.push_back(std::move(record)); }
    std::size_t count() const { return m_records.size(); }

private:
    std::vector<ImportedRecord> m_records;
    std::size_t m_next = 0;
};

} // namespace

ImportReport importWhole(ABAddressBook &book, const QByteArray &content, const RecordImporter::Progress &progress)
{
    ImportReport report;
    const auto source = recordSource(content, formatOfContent(content));
    ReadRecords records;
    for (ImportedRecord record = source->next(); record.record; record = source->next()) {
        records.append(std::move(record));
        if (records.count() % kRecordsPerProgress == 0 && !progress(source->bytesRead(), source->totalBytes())) {
            report.cancelled = true;
            return report;
        }
    }
    report.problems = source->takeProblems();
    RecordImporter importer(book, RecordImporter::OnOtherContent::AddUnderNewUid);
    importer.addAll(records, [](qint64, qint64) { return true; });
    Error error;
    if (!book.save(&error)) {
        book.withdraw(importer.addedPeople());
        report.error = error;
        return report;
    }
    report.imported = importer.importedCount();
    report.alreadyThere = importer.alreadyThereCount();
    return report;
}
