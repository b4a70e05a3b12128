// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/WholePackage.h"

#include <QByteArray>

#include <zip.h>

#include <array>
#include <memory>

namespace {

using Archive = std::unique_ptr<zip_t, decltype(&zip_discard)>;
using Part = std::unique_ptr<zip_file_t, decltype(&zip_fclose)>;

/// The name of the first element; empty where there is none in @p begin.
QByteArray rootName(const QByteArray &begin)
{
    qsizetype start = begin.indexOf('<');
    while (start >= 0 && start + 1 < begin.size() && (begin.at(start + 1) == '?' || begin.at(start + 1) == '!'))
        start = begin.indexOf('<', start + 1);
    if (start < 0)
        return {};
    qsizetype end = start + 1;
    while (end < begin.size() && !QByteArrayView(" \t\r\n/>").contains(begin.at(end)))
        ++end;
    return begin.sliced(start + 1, end - start - 1);
}

bool isWhole(zip_file_t *part)
{
    constexpr qsizetype kEnd = 256;
    std::array<char, std::size_t(64) * 1024> piece{};
    QByteArray begin;
    QByteArray end;
    zip_int64_t size = 0;
    while ((size = zip_fread(part, piece.data(), piece.size())) > 0) {
        if (begin.isEmpty())
            begin = QByteArray(piece.data(), size);
        end.append(piece.data() + std::max<zip_int64_t>(0, size - kEnd), std::min<zip_int64_t>(size, kEnd));
        end = end.last(std::min(end.size(), kEnd));
    }
    const QByteArray root = rootName(begin);
    const QByteArray trimmed = end.trimmed();
    const QByteArray endTag = "</" + root + '>';
    return size == 0 && !root.isEmpty()
        && (trimmed.endsWith(endTag) || (begin.size() <= kEnd && trimmed.endsWith("/>")));
}

} // namespace

Result<void> checkWholePackage(const QByteArray &path)
{
    const Archive archive(zip_open(path.constData(), ZIP_RDONLY | ZIP_CHECKCONS, nullptr), zip_discard);
    if (!archive)
        return Error{ErrorKind::Io, QStringLiteral("the finished file cannot be read back")};
    const zip_int64_t count = zip_get_num_entries(archive.get(), 0);
    for (zip_int64_t i = 0; i < count; ++i) {
        const Part part(zip_fopen_index(archive.get(), static_cast<zip_uint64_t>(i), 0), zip_fclose);
        if (!part || !isWhole(part.get()))
            return Error{ErrorKind::Io,
                QStringLiteral("the finished file lacks the end of ")
                    % QString::fromUtf8(zip_get_name(archive.get(), static_cast<zip_uint64_t>(i), 0))};
    }
    return {};
}
