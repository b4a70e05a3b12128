// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/KnownLayout.h"

#include "contacts/stores/sqlite/Schema.h"

#include <SQLiteCpp/Database.h>

#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <vector>

namespace KnownLayout {

namespace {

// The SQLite file format, https://www.sqlite.org/fileformat2.html, sections 1.3 (the header), 1.6 (pages) and 2.1
// (rows). Files of ours have SQLite's usual page size.
constexpr qint64 kPageSize = 4096;
constexpr uchar kIndexInterior = 2;
constexpr uchar kTableInterior = 5;
constexpr uchar kIndexLeaf = 10;
constexpr uchar kTableLeaf = 13;

enum Kind { Contact, ContactIndex, Image, ImageIndex, Other };

/// A number of one to nine bytes; 0 and an @p at behind @p end where it is not whole.
quint64 varint(const uchar *&at, const uchar *end)
{
    constexpr int kLongest = 9;
    quint64 value = 0;
    for (int i = 0; i < kLongest && at < end; ++i) {
        const uchar byte = *at++;
        if (i == kLongest - 1)
            return value << 8 | byte;
        value = value << 7 | (byte & 0x7F);
        if (byte < 0x80)
            return value;
    }
    at = end + 1;
    return 0;
}

/// What the columns of a row hold (the format calls it serial types).
Kind kindOf(uchar pageType, const std::vector<quint64> &columns)
{
    constexpr quint64 kFirstText = 13;
    constexpr quint64 kHash = kFirstText + 2 * 64; // a text of 64 characters
    constexpr quint64 kDigest = 12 + 2 * 8; // a blob of eight bytes
    const auto isText = [](quint64 type) { return type >= kFirstText && type % 2 == 1; };
    if (pageType == kTableLeaf && columns.size() == 4) {
        const bool isContact =
            columns[0] == 0 && isText(columns[1]) && isText(columns[2]) && (columns[3] == 0 || columns[3] == kDigest);
        return isContact ? Contact : Other;
    }
    if (columns.size() != 2 || !isText(columns[0]))
        return Other;
    if (pageType == kTableLeaf)
        return columns[0] == kHash && !isText(columns[1]) ? Image : Other;
    const bool endsWithId = columns[1] > 0 && columns[1] < 10;
    return !endsWithId ? Other : columns[0] == kHash ? ImageIndex : ContactIndex;
}

class Pages
{
public:
    Pages(const uchar *bytes, quint32 count) : m_bytes(bytes), m_count(count) { }

    Roots roots() const
    {
        std::vector<bool> isChild(m_count + 1);
        for (quint32 page = 2; page <= m_count; ++page) {
            for (const quint32 child : children(page))
                isChild[child] = true;
        }
        std::array<quint32, Other + 1> best{2, 3, 4, 5, 0};
        std::array<std::size_t, Other + 1> most{};
        for (quint32 page = 2; page <= m_count; ++page) {
            if (isChild[page])
                continue;
            std::vector<bool> seen(m_count + 1);
            Kind kind = Other;
            const std::size_t size = leavesBelow(page, seen, kind);
            if (size > most[kind]) {
                most[kind] = size;
                best[kind] = page;
            }
        }
        return {best[Contact], best[ContactIndex], best[Image], best[ImageIndex]};
    }

private:
    const uchar *at(quint32 page) const { return m_bytes + (page - 1) * kPageSize; }

    /// Of an inner page; those that can be.
    std::vector<quint32> children(quint32 page) const
    {
        const uchar *bytes = at(page);
        if (bytes[0] != kTableInterior && bytes[0] != kIndexInterior)
            return {};
        std::vector<quint32> children{qFromBigEndian<quint32>(bytes + 8)};
        const int cells = qFromBigEndian<quint16>(bytes + 3);
        for (int i = 0; i < cells && 12 + 2 * i + 1 < kPageSize; ++i) {
            const int place = qFromBigEndian<quint16>(bytes + 12 + 2 * i);
            if (place + 4 <= kPageSize)
                children.push_back(qFromBigEndian<quint32>(bytes + place));
        }
        std::erase_if(children, [this](quint32 child) { return child < 2 || child > m_count; });
        return children;
    }

    Kind kindOfLeaf(quint32 page) const
    {
        const uchar *bytes = at(page);
        const uchar *end = bytes + kPageSize;
        if ((bytes[0] != kTableLeaf && bytes[0] != kIndexLeaf) || qFromBigEndian<quint16>(bytes + 3) == 0)
            return Other;
        const uchar *place = bytes + qFromBigEndian<quint16>(bytes + 8);
        varint(place, end); // the row's size
        if (bytes[0] == kTableLeaf)
            varint(place, end); // its id
        const uchar *header = place;
        const quint64 size = varint(place, end);
        if (place > end || size > quint64(end - header))
            return Other;
        std::vector<quint64> columns;
        while (place < header + size)
            columns.push_back(varint(place, header + size));
        return kindOf(bytes[0], columns);
    }

    std::size_t leavesBelow(quint32 page, std::vector<bool> &seen, Kind &kind) const
    {
        if (seen[page])
            return 0;
        seen[page] = true;
        const std::vector<quint32> below = children(page);
        if (below.empty()) {
            const Kind own = kindOfLeaf(page);
            kind = own == Other ? kind : own;
            return 1;
        }
        std::size_t count = 0;
        for (const quint32 child : below)
            count += leavesBelow(child, seen, kind);
        return count;
    }

    const uchar *m_bytes;
    quint32 m_count;
};

/// Of a new file whose tables are said to be at these pages.
QByteArray firstPage(const QString &newPath, const Roots &roots)
{
    {
        SQLite::Database database(QFile::encodeName(newPath).constData(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        database.exec("PRAGMA synchronous = OFF; PRAGMA page_size = " + std::to_string(kPageSize)
            + "; PRAGMA application_id = " + std::to_string(Schema::kApplicationId) + ';' + Schema::tables()
            + Schema::versionMark() + "PRAGMA writable_schema = ON; DELETE FROM sqlite_schema WHERE tbl_name NOT IN "
            + "('contact', 'image')");
        const auto place = [&database](const char *name, quint32 page) {
            database.exec(
                "UPDATE sqlite_schema SET rootpage = " + std::to_string(page) + " WHERE name = '" + name + '\'');
        };
        place("contact", roots.contact);
        place("sqlite_autoindex_contact_1", roots.contactIndex);
        place("image", roots.image);
        place("sqlite_autoindex_image_1", roots.imageIndex);
    }
    QFile file(newPath);
    const QByteArray page = file.open(QIODevice::ReadOnly) ? file.read(kPageSize) : QByteArray();
    file.remove();
    return page;
}

} // namespace

Roots foundIn(const QString &path)
{
    QFile file(path);
    const qint64 pages = file.open(QIODevice::ReadOnly) ? file.size() / kPageSize : 0;
    const uchar *bytes = pages > 1 ? file.map(0, pages * kPageSize) : nullptr;
    return bytes ? Pages(bytes, quint32(pages)).roots() : Roots();
}

bool rebuildFirstPage(const QString &path, const Roots &roots)
{
    QByteArray page = firstPage(path % QStringLiteral("-first-page"), roots);
    QFile file(path);
    if (page.size() != kPageSize || !file.open(QIODevice::ReadWrite))
        return false;
    char *header = page.data();
    header[18] = 2; // both: it may have a write-ahead log, which knows newer pages, this one among them
    header[19] = 2;
    qToBigEndian(quint32((file.size() + kPageSize - 1) / kPageSize), header + 28);
    qToBigEndian(quint64(0), header + 32); // no list of free pages
    std::copy_n(header + 24, 4, header + 92); // the size counts if it was written with the last change
    return file.write(page) == kPageSize;
}

} // namespace KnownLayout
