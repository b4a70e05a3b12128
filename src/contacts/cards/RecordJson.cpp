// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/RecordJson.h"

#include "contacts/cards/RecordJsonReader.h"

#include <algorithm>

namespace {

/// Writes one line of JSON from front to back. Each value ends with a comma, until a bracket is closed behind it.
class JsonLine
{
public:
    JsonLine()
    {
        constexpr std::size_t kUsualSize = 1024;
        m_text.reserve(kUsualSize);
    }
    void open(char bracket) { m_text += bracket; }
    void close(char bracket)
    {
        if (m_text.back() == ',')
            m_text.pop_back();
        m_text.append(1, bracket).append(1, ',');
    }
    /// Returns the line, for the key's value.
    JsonLine &key(QLatin1StringView name)
    {
        m_text.append(1, '"').append(name.data(), std::size_t(name.size())).append("\":");
        return *this;
    }
    /// As it is: a number or null.
    void plain(std::string_view value) { m_text.append(value).append(1, ','); }
    void value(QStringView text);
    std::string take()
    {
        m_text.pop_back();
        return std::move(m_text);
    }

private:
    void escaped(char character);

    std::string m_text;
};

void JsonLine::escaped(char character)
{
    constexpr std::string_view kShort = "\b\f\n\r\t\"\\";
    constexpr std::string_view kLetters = "bfnrt\"\\";
    constexpr std::string_view kHex = "0123456789abcdef";
    if (const auto place = kShort.find(character); place != std::string_view::npos)
        m_text.append({'\\', kLetters[place]});
    else
        m_text.append("\\u00").append({kHex[std::size_t(character) / 16], kHex[std::size_t(character) % 16]});
}

void JsonLine::value(QStringView text)
{
    const auto needsEscape = [](char c) { return (c >= 0 && c < 0x20) || c == '"' || c == '\\'; };
    const QByteArray utf8 = text.toUtf8();
    m_text += '"';
    for (const char *rest = utf8.begin(); rest != utf8.end();) {
        const char *end = std::find_if(rest, utf8.end(), needsEscape);
        m_text.append(rest, end);
        if (end != utf8.end())
            escaped(*end++);
        rest = end;
    }
    m_text += "\",";
}

void write(JsonLine &json, const ABMultiValue &value)
{
    json.open('[');
    for (const auto &entry : value.entries()) {
        json.open('{');
        if (!entry.label.isNull())
            json.key(QLatin1StringView("label")).value(entry.label);
        json.key(QLatin1StringView("value"));
        if (const auto *text = std::get_if<QString>(&entry.value)) {
            json.value(*text);
        } else {
            json.open('{');
            for (const auto &[key, part] : entry.dictionary())
                json.key(keyInfo(key).name).value(part);
            json.close('}');
        }
        json.close('}');
    }
    json.close(']');
}

void write(JsonLine &json, const PersonRecord &record)
{
    for (const ABPropertyInfo &info : allProperties()) {
        switch (info.kind) {
        case ABPropertyKind::Text:
            if (const QString *text = record.text(info.property))
                json.key(info.name).value(*text);
            break;
        case ABPropertyKind::Date:
            if (const auto date = record.birthday())
                json.key(info.name).value(date->toString(Qt::ISODate));
            break;
        case ABPropertyKind::Integer:
            if (const auto number = record.flags())
                json.key(info.name).plain(std::to_string(*number));
            break;
        case ABPropertyKind::MultiText:
        case ABPropertyKind::MultiDictionary:
            if (const ABMultiValue *value = record.multiValue(info.property))
                write(json.key(info.name), *value);
            break;
        case ABPropertyKind::ReadOnlyText:
            break;
        }
    }
}

void write(JsonLine &json, const KeptLine &line)
{
    json.open('[');
    json.value(line.text);
    if (line.basis.isNull())
        json.plain("null");
    else
        json.value(line.basis);
    json.close(']');
}

} // namespace

std::string recordToJson(const QString &uid, const PersonRecord &record)
{
    JsonLine json;
    json.open('{');
    if (!uid.isNull())
        json.key(QLatin1StringView("uid")).value(uid);
    write(json, record);
    if (const QByteArray *image = record.imageData())
        json.key(QLatin1StringView("image")).value(QString::fromLatin1(image->toBase64()));
    json.close('}');
    return json.take();
}

Result<ImportedRecord> recordFromJson(std::string_view line)
{
    auto read = RecordJsonReader(RecordJsonReader::Form::Line).read(line);
    return read ? Result<ImportedRecord>({read->uid, std::move(read->record)}) : read.error();
}

std::string recordToDocument(const PersonRecord &record, std::string_view pictureName)
{
    JsonLine json;
    json.open('{');
    write(json, record);
    if (!pictureName.empty())
        json.key(QLatin1StringView("picture")).value(QString::fromUtf8(pictureName));
    if (!record.keptLines().empty()) {
        json.key(QLatin1StringView("cardLines")).open('[');
        for (const KeptLine &line : record.keptLines())
            write(json, line);
        json.close(']');
    }
    json.close('}');
    return json.take();
}
