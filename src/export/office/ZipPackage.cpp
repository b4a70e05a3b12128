// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/office/ZipPackage.h"

#include "export/office/WriteAll.h"

#include <zip.h>

#include <cerrno>

namespace {

/// Of 1 to 9, for deflated members. libzip's own choice, 9, takes three times as long for a tenth less.
constexpr zip_uint32_t kLevel = 4;

/// Where libzip writes to.
struct TargetWriter
{
    QIODevice &device;
    zip_error_t error{};
};

zip_int64_t failed(zip_error_t &error, int code, int systemError)
{
    zip_error_set(&error, code, systemError);
    return -1;
}

zip_int64_t writeTarget(void *state, void *data, zip_uint64_t length, zip_source_cmd_t command)
{
    TargetWriter &target = *static_cast<TargetWriter *>(state);
    switch (command) {
    case ZIP_SOURCE_SUPPORTS:
        return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT,
            ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, ZIP_SOURCE_SEEK, ZIP_SOURCE_TELL, ZIP_SOURCE_BEGIN_WRITE,
            ZIP_SOURCE_COMMIT_WRITE, ZIP_SOURCE_ROLLBACK_WRITE, ZIP_SOURCE_WRITE, ZIP_SOURCE_SEEK_WRITE,
            ZIP_SOURCE_TELL_WRITE, ZIP_SOURCE_REMOVE, -1);
    case ZIP_SOURCE_STAT: // there is nothing yet: an archive is to be made
        return failed(target.error, ZIP_ER_READ, ENOENT);
    case ZIP_SOURCE_WRITE:
        if (!writeAll(target.device, QByteArrayView(static_cast<const char *>(data), qsizetype(length))))
            return failed(target.error, ZIP_ER_WRITE, 0); // the device keeps the reason
        return zip_int64_t(length);
    case ZIP_SOURCE_SEEK_WRITE: {
        const zip_int64_t position = zip_source_seek_compute_offset(
            zip_uint64_t(target.device.pos()), zip_uint64_t(target.device.size()), data, length, &target.error);
        if (position < 0 || !target.device.seek(position))
            return failed(target.error, ZIP_ER_SEEK, 0);
        return 0;
    }
    case ZIP_SOURCE_TELL_WRITE:
        return target.device.pos();
    case ZIP_SOURCE_ERROR:
        return zip_error_to_data(&target.error, data, length);
    case ZIP_SOURCE_BEGIN_WRITE:
    case ZIP_SOURCE_COMMIT_WRITE:
    case ZIP_SOURCE_ROLLBACK_WRITE:
    case ZIP_SOURCE_CLOSE:
    case ZIP_SOURCE_FREE:
    case ZIP_SOURCE_REMOVE:
        return 0;
    default:
        return failed(target.error, ZIP_ER_OPNOTSUPP, 0);
    }
}

zip_source_t *partOfSpool(zip_t *archive, const SpoolFile &spool, qint64 begin, qint64 size)
{
    if (size == 0) // which libzip would take for all the rest
        return zip_source_buffer(archive, nullptr, 0, 0);
    return zip_source_file(archive, spool.path().constData(), zip_uint64_t(begin), size);
}

Error reason(const QString &text)
{
    return {ErrorKind::Io, text};
}

Error reasonOf(zip_error_t &error)
{
    return reason(QString::fromUtf8(zip_error_strerror(&error)));
}

/// The two 16-bit words in which zip files keep a time: years from 1980, steps of two seconds.
std::pair<zip_uint16_t, zip_uint16_t> dosTime(const QDateTime &time)
{
    const QDate date = time.date();
    const QTime clock = time.time();
    const int year = qBound(1980, date.year(), 2107) - 1980;
    return {zip_uint16_t(clock.hour() << 11 | clock.minute() << 5 | clock.second() / 2),
        zip_uint16_t(year << 9 | date.month() << 5 | date.day())};
}

} // namespace

void ZipPackage::beginMember(const QByteArray &name, Method method)
{
    m_members.push_back({name, method, m_spool.length()});
}

void ZipPackage::addMember(const QByteArray &name, Method method, QByteArrayView bytes)
{
    beginMember(name, method);
    m_spool.write(bytes.data(), bytes.size());
}

Result<void> ZipPackage::writeTo(QIODevice &target)
{
    const qint64 end = m_spool.length();
    if (auto finished = m_spool.finish(); !finished)
        return finished;

    TargetWriter writer{target};
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t *source = zip_source_function_create(writeTarget, &writer, &error);
    zip_t *archive = source == nullptr ? nullptr : zip_open_from_source(source, ZIP_CREATE | ZIP_TRUNCATE, &error);
    if (archive == nullptr) {
        zip_source_free(source);
        return reasonOf(error);
    }

    const auto [time, date] = dosTime(m_time);
    for (std::size_t i = 0; i < m_members.size(); ++i) {
        const Member &member = m_members[i];
        const qint64 next = i + 1 < m_members.size() ? m_members[i + 1].begin : end;
        zip_source_t *part = partOfSpool(archive, m_spool, member.begin, next - member.begin);
        const zip_int64_t index =
            part == nullptr ? -1 : zip_file_add(archive, member.name.constData(), part, ZIP_FL_ENC_UTF_8);
        const zip_int32_t method = member.method == Method::Stored ? ZIP_CM_STORE : ZIP_CM_DEFLATE;
        if (index < 0 || zip_set_file_compression(archive, zip_uint64_t(index), method, kLevel) < 0
            || zip_file_set_dostime(archive, zip_uint64_t(index), time, date, 0) < 0) {
            if (index < 0)
                zip_source_free(part);
            const Error cause = reasonOf(*zip_get_error(archive));
            zip_discard(archive);
            return cause;
        }
    }
    if (zip_close(archive) < 0) {
        const int code = zip_error_code_zip(&writer.error);
        const bool isTarget = code == ZIP_ER_WRITE || code == ZIP_ER_SEEK;
        const Error cause = isTarget ? reason(target.errorString()) : reasonOf(*zip_get_error(archive));
        zip_discard(archive);
        return cause;
    }
    return {};
}
