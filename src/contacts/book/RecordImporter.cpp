// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/RecordImporter.h"

#include "contacts/cards/JsonLinesReader.h"
#include "contacts/cards/VCardReader.h"
#include "contacts/model/ContentHash.h"
#include "contacts/model/Utf8Text.h"

#include <QHash>
#include <QSet>
#include <QUuid>

#include <algorithm>

namespace {

/// Under which uids are made from contents. Changing it would make old imports unknown.
const QUuid kContentNamespace(0x6f1d3c52, 0x8a0b, 0x4e57, 0x9c, 0x33, 0x51, 0xd2, 0x7e, 0x0a, 0x64, 0xb8);

/// How often progress is told; telling it for each of a million records would cost more than reading them.
constexpr std::size_t kRecordsPerProgress = 256;

/// How often others may be faster before an import gives up.
constexpr int kAttempts = 5;

QString uidFor(const QByteArray &content)
{
    return QUuid::createUuidV5(kContentNamespace, content).toString(QUuid::WithoutBraces).toUpper();
}

/// Lines that every program replaces, so they say nothing about the person.
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
    const bool hasMark = content.startsWith(kByteOrderMark);
    const QByteArrayView text = QByteArrayView(content).sliced(hasMark ? qsizetype(kByteOrderMark.size()) : 0);
    return text.trimmed().startsWith('{') ? RecordFormat::JsonLines : RecordFormat::VCard;
}

std::unique_ptr<RecordSource> recordSource(const QByteArray &content, RecordFormat format)
{
    if (format == RecordFormat::JsonLines)
        return std::make_unique<JsonLinesReader>(content);
    return std::make_unique<VCardReader>(content);
}

namespace {

/// What records would change in an address book, decided before anything is changed.
class ImportPlan
{
public:
    ImportPlan(const ABAddressBook &book, OnOtherContent onOtherContent)
        : m_book(book), m_onOtherContent(onOtherContent)
    { }

    void add(const ImportedRecord &read)
    {
        if (!read.uid.isNull()) {
            add(read.record, read.uid);
            return;
        }
        // Equal people without a uid are as many people as the file says.
        const QByteArray hash = contentHash(*read.record);
        add(read.record, uidFor(hash + QByteArray::number(m_timesSeen[hash]++)));
    }

    /// Ends the planning: what it takes is not needed for the save, which needs memory itself.
    std::vector<RecordChange> takeChanges()
    {
        m_placeOf.clear();
        m_timesSeen.clear();
        return std::move(m_changes);
    }
    qint64 imported = 0;
    qint64 alreadyThere = 0;

private:
    void add(const PersonRecordPtr &record, const QString &uid)
    {
        const auto planned = m_placeOf.constFind(uid);
        const ABPersonPtr present = planned == m_placeOf.constEnd() ? m_book.personWithUniqueId(uid) : nullptr;
        const PersonRecordPtr stored = planned != m_placeOf.constEnd() ? m_changes[*planned].after
            : present                                                  ? present->record()
                                                                       : nullptr;
        if (stored && covers(*stored, *record)) {
            ++alreadyThere;
            return;
        }
        if (stored && m_onOtherContent == OnOtherContent::AddUnderNewUid) {
            add(record, uidFor(uid.toUtf8() + contentHash(*record)));
            return;
        }
        PersonRecordPtr after = record;
        if (stored && record->keptLines().empty()) { // JSON cannot carry them, which is no reason to lose them
            auto withLines = std::make_shared<PersonRecord>(*record);
            withLines->setKeptLines(stored->keptLines());
            after = std::move(withLines);
        }
        ++imported;
        if (planned != m_placeOf.constEnd()) {
            m_changes[*planned].after = std::move(after);
            return;
        }
        m_placeOf.insert(uid, m_changes.size());
        m_changes.push_back({uid, stored, std::move(after)});
    }

    const ABAddressBook &m_book;
    const OnOtherContent m_onOtherContent;
    std::vector<RecordChange> m_changes;
    QHash<QString, std::size_t> m_placeOf; // by uid, in the changes
    QHash<QByteArray, quint64> m_timesSeen; // by content hash
};

} // namespace

ImportReport importFile(ABAddressBook &book, std::unique_ptr<RecordSource> source, const QString &fileName,
    const ImportProgress &progress, OnOtherContent onOtherContent)
{
    ImportReport report;
    std::vector<ImportedRecord> records;
    for (ImportedRecord record = source->next(); record.record; record = source->next()) {
        records.push_back(std::move(record));
        if (progress && records.size() % kRecordsPerProgress == 0
            && !progress(source->bytesRead(), source->totalBytes())) {
            report.cancelled = true;
            return report;
        }
    }
    report.problems = source->takeProblems();
    source.reset(); // the file's content is not needed for the save, which needs memory itself
    const ChangeCausePtr cause = makeCause(ChangeCause::Kind::Import, fileName);
    for (int attempt = 1;; ++attempt) {
        ImportPlan plan(book, onOtherContent);
        for (const ImportedRecord &record : records)
            plan.add(record);
        const auto applied = book.apply(plan.takeChanges(), cause);
        if (applied) {
            report.imported = plan.imported;
            report.alreadyThere = plan.alreadyThere;
            return report;
        }
        // Where others were faster, what they saved is looked at, too.
        if (attempt == kAttempts || applied.error().kind != ErrorKind::Conflict || !book.catchUp()) {
            report.error = applied.error();
            return report;
        }
    }
}
