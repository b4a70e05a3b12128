// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/model/ContentHash.h"

#include <QCryptographicHash>
#include <QStringEncoder>

#include <cstring>

namespace {

/// What is hashed, one behind the other, so that texts cannot run into each other.
class Content
{
public:
    Content()
    {
        constexpr qsizetype kUsualSize = 2048;
        m_bytes.reserve(kUsualSize);
    }
    void add(const QString &text)
    {
        add(quint64(0)); // the place of the size
        const qsizetype begin = m_bytes.size();
        m_bytes.resize(begin + m_encoder.requiredSpace(text.size()));
        m_bytes.truncate(m_encoder.appendToBuffer(m_bytes.data() + begin, text) - m_bytes.constData());
        const quint64 size = text.isNull() ? 0 : quint64(m_bytes.size() - begin) + 1;
        std::memcpy(m_bytes.data() + begin - qsizetype(sizeof size), &size, sizeof size);
    }
    void add(std::monostate) { }
    void add(QDate date) { add(quint64(date.toJulianDay())); }
    void add(qint64 number) { add(quint64(number)); }
    void add(quint64 number) { m_bytes.append(reinterpret_cast<const char *>(&number), sizeof number); }
    void add(const ABMultiValue &value)
    {
        for (const auto &entry : value.entries()) {
            add(entry.label);
            if (const auto *text = std::get_if<QString>(&entry.value)) {
                add(*text);
                continue;
            }
            for (const auto &[key, part] : entry.dictionary()) {
                add(quint64(keyInfo(key).id));
                add(part);
            }
        }
    }
    QByteArray hash() const { return QCryptographicHash::hash(m_bytes, QCryptographicHash::Sha1); }

private:
    QByteArray m_bytes;
    QStringEncoder m_encoder{QStringEncoder::Utf8, QStringEncoder::Flag::Stateless};
};

} // namespace

QByteArray contentHash(const PersonRecord &record)
{
    Content content;
    for (const auto &info : allProperties()) {
        const ABValue value = record.value(info.property);
        if (std::holds_alternative<std::monostate>(value))
            continue;
        content.add(quint64(info.id));
        std::visit([&content](const auto &each) { content.add(each); }, value);
    }
    if (const QByteArray *image = record.imageData())
        content.add(QString::fromLatin1(image->toBase64()));
    for (const auto &line : record.keptLines())
        content.add(line.text);
    return content.hash();
}
