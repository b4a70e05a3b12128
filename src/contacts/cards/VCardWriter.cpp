// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/VCardWriter.h"

#include "contacts/cards/ExactValues.h"
#include "contacts/cards/PlainLines.h"
#include "contacts/cards/TextCoding.h"
#include "contacts/cards/VCardReader.h"
#include "contacts/cards/WordTable.h"

#include <QSet>

#include <map>

namespace {

constexpr qsizetype kLineLength = 75;

bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

bool isBlank(char byte)
{
    return byte == ' ' || byte == '\t';
}

/// Where to end a line of at most @p room bytes that begins at @p at: never inside a character, and if possible not
/// before a blank, which some readers drop.
qsizetype foldPosition(const QByteArray &line, qsizetype at, qsizetype room)
{
    qsizetype end = at + room;
    while (isContinuation(line[end]))
        --end;
    qsizetype better = end;
    while (better > at + room / 2 && (isBlank(line[better]) || isContinuation(line[better])))
        --better;
    return isBlank(line[better]) || isContinuation(line[better]) ? end : better;
}

void appendFolded(QByteArray &out, const QByteArray &line)
{
    qsizetype at = 0;
    qsizetype room = kLineLength;
    while (line.size() - at > room) {
        const qsizetype end = foldPosition(line, at, room);
        out.append(line.constData() + at, end - at).append("\r\n ");
        at = end;
        room = kLineLength - 1; // the blank counts
    }
    out.append(line.constData() + at, line.size() - at).append("\r\n");
}

/// The name of the image format in TYPE and in media types; empty for one that is not known by its first bytes.
QLatin1StringView pictureType(const QByteArray &image)
{
    struct Magic
    {
        QByteArrayView bytes;
        QLatin1StringView type;
    };
    constexpr std::array magics{
        Magic{"\xFF\xD8\xFF", QLatin1StringView("JPEG")},
        Magic{"\x89PNG", QLatin1StringView("PNG")},
        Magic{"GIF8", QLatin1StringView("GIF")},
    };
    const auto *found =
        std::ranges::find_if(magics, [&image](const Magic &magic) { return image.startsWith(magic.bytes); });
    return found == magics.end() ? QLatin1StringView() : found->type;
}

/// The group name of a content line; empty when it has none.
QStringView groupOf(QStringView line)
{
    for (qsizetype at = 0; at < line.size() && line[at] != u':' && line[at] != u';'; ++at) {
        if (line[at] == u'.')
            return line.first(at);
    }
    return {};
}

/// A kept line that would not be read as one line of this card must not get into it.
bool isWritable(QStringView line)
{
    const auto begins = [line](QLatin1StringView word) { return line.startsWith(word, Qt::CaseInsensitive); };
    return line.contains(u':') && !line.contains(u'\r') && !begins(QLatin1StringView("BEGIN:"))
        && !begins(QLatin1StringView("END:")) && !begins(QLatin1StringView(" ")) && !begins(QLatin1StringView("\t"));
}

/// Writes one card. For one record.
class CardWriter
{
public:
    CardWriter(const QString &uid, const PersonRecord &record, VCardVersion version)
        : m_uid(uid), m_record(record), m_version(version)
    { }

    QByteArray write();

private:
    void findKeptLines();
    QString inVersion4(const PlainUnit &unit) const;
    void writePhoto();
    void writeUnmodelled();
    void writeExact();
    QString keptFor(const QString &plain);
    void writeLines(const QString &lines);
    QString freeItem();

    const QString &m_uid;
    const PersonRecord &m_record;
    const VCardVersion m_version;
    QByteArray m_card;
    // By what they stand for, views into the record. Equal values may have a line each, in order.
    std::multimap<QStringView, const KeptLine *> m_keptByBasis;
    QSet<QString> m_groups; // in upper case
    int m_lastItem = 0;
};

QByteArray CardWriter::write()
{
    m_card = m_version == VCardVersion::V4 ? "BEGIN:VCARD\r\nVERSION:4.0\r\n" : "BEGIN:VCARD\r\nVERSION:3.0\r\n";
    findKeptLines();
    for (const PlainUnit &unit : plainUnits(m_uid, m_record)) {
        const QString kept = keptFor(unit.lines);
        writeLines(!kept.isNull() ? kept : m_version == VCardVersion::V4 ? inVersion4(unit) : unit.lines);
    }
    writePhoto();
    writeUnmodelled();
    writeExact();
    m_card += "END:VCARD\r\n";
    return std::move(m_card);
}

void CardWriter::findKeptLines()
{
    for (const KeptLine &kept : m_record.keptLines()) {
        for (const QStringView line : QStringView(kept.text).split(u'\n')) {
            const QStringView group = groupOf(line);
            if (!group.isEmpty())
                m_groups.insert(group.toString().toUpper());
        }
        if (!kept.basis.isNull())
            m_keptByBasis.emplace(kept.basis, &kept);
    }
}

/// The kept line that says more than @p plain does, null if there is none. Each is used once.
QString CardWriter::keptFor(const QString &plain)
{
    if (m_keptByBasis.empty())
        return {};
    const auto found = m_keptByBasis.lower_bound(plain);
    return found == m_keptByBasis.end() || found->first != plain ? QString()
                                                                 : m_keptByBasis.extract(found).mapped()->text;
}

/// 4.0 has dates without dashes, and a form of its own for an unknown year.
QString CardWriter::inVersion4(const PlainUnit &unit) const
{
    if (unit.property != ABProperty::Birthday)
        return unit.lines;
    const QDate date = *m_record.birthday();
    return QLatin1String("BDAY:")
        % date.toString(date.year() == kNoYear ? QStringLiteral("--MMdd") : QStringLiteral("yyyyMMdd"));
}

void CardWriter::writeLines(const QString &lines)
{
    QString item;
    for (QStringView line : QStringView(lines).split(u'\n', Qt::SkipEmptyParts)) {
        if (!isWritable(line))
            continue;
        if (groupOf(line) != kUnitGroup) {
            appendFolded(m_card, line.toUtf8());
            continue;
        }
        if (item.isEmpty())
            item = freeItem();
        appendFolded(m_card, (item + line.sliced(kUnitGroup.size())).toUtf8());
    }
}

QString CardWriter::freeItem()
{
    QString item;
    do {
        item = QStringLiteral("item%1").arg(++m_lastItem);
    } while (m_groups.contains(item.toUpper()));
    return item;
}

void CardWriter::writePhoto()
{
    const QByteArray *image = m_record.imageData();
    if (!image)
        return;
    const QLatin1StringView type = pictureType(*image);
    QString head = keptFor(plainPhoto(m_record));
    if (head.isNull() && m_version == VCardVersion::V4)
        head = QLatin1String("PHOTO:data:")
            % (type.isEmpty() ? QString() : QLatin1String("image/") % QString(type).toLower())
            % QLatin1String(";base64,");
    else if (head.isNull())
        head = QLatin1String("PHOTO;ENCODING=b") % (type.isEmpty() ? QString() : QLatin1String(";TYPE=") % type) % u':';
    if (isWritable(head))
        appendFolded(m_card, head.toUtf8() + image->toBase64());
}

void CardWriter::writeUnmodelled()
{
    for (const KeptLine &kept : m_record.keptLines()) {
        if (kept.basis.isNull())
            writeLines(kept.text);
    }
}

void CardWriter::writeExact()
{
    VCardReader reader(m_card + "END:VCARD\r\n");
    const ImportedRecord imported = reader.next();
    const CardValues read{imported.uid, imported.record ? *imported.record : PersonRecord()};
    const CardValues wanted{m_uid.isEmpty() ? QString() : m_uid, m_record};
    for (const QString &line : exactLines(wanted, read))
        appendFolded(m_card, line.toUtf8());
}

} // namespace

QByteArray vCardFromRecord(const QString &uid, const PersonRecord &record, VCardVersion version)
{
    return CardWriter(uid, record, version).write();
}
