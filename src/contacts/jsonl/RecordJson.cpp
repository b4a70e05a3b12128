// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/jsonl/RecordJson.h"

#include "contacts/record/Utf8Text.h"

#include <nlohmann/json.hpp>

#include <algorithm>

using Json = nlohmann::ordered_json;

namespace {

/// Takes each key as it comes, without looking for it among those that are there: a line of many keys takes as long as
/// it is, and keys that come twice can be named.
template <class Key, class T, class Less, class Allocator>
struct AllKeys : nlohmann::ordered_map<Key, T, Less, Allocator>
{
    using nlohmann::ordered_map<Key, T, Less, Allocator>::ordered_map;
    T &operator[](const Key &key) { return this->emplace_back(key, T()).second; }
};
using ReadJson = nlohmann::basic_json<AllKeys>;

constexpr const char *kUidName = "uid";
constexpr const char *kImageName = "image";
constexpr const char *kLabelName = "label";
constexpr const char *kValueName = "value";

Json toJson(const QString &text)
{
    return text.toStdString();
}

std::string name(QLatin1StringView text)
{
    return {text.data(), static_cast<std::size_t>(text.size())};
}

Json toJson(const ABMultiValue &value)
{
    Json entries = Json::array();
    for (const auto &entry : value.entries()) {
        Json object = Json::object();
        if (!entry.label.isNull())
            object[kLabelName] = toJson(entry.label);
        if (const auto *text = std::get_if<QString>(&entry.value)) {
            object[kValueName] = toJson(*text);
        } else {
            Json parts = Json::object();
            for (const auto &[key, part] : entry.dictionary())
                parts[name(keyInfo(key).name)] = toJson(part);
            object[kValueName] = std::move(parts);
        }
        entries.push_back(std::move(object));
    }
    return entries;
}

struct ToJson
{
    Json operator()(std::monostate) const { return nullptr; }
    Json operator()(const QString &text) const { return toJson(text); }
    Json operator()(QDate date) const { return toJson(date.toString(Qt::ISODate)); }
    Json operator()(qint64 number) const { return number; }
    Json operator()(const ABMultiValue &value) const { return toJson(value); }
};

/// Thrown inside this file only, to leave a half-read object; recordFromJson turns it into an Error.
struct Refusal
{
    QString reason;
};

QString quoted(std::string_view key)
{
    return QLatin1Char('"') % QString::fromUtf8(key.data(), qsizetype(key.size())) % QLatin1Char('"');
}

[[noreturn]] void refuse(std::string_view key, const char *reason)
{
    throw Refusal{quoted(key) % QLatin1Char(' ') % QLatin1String(reason)};
}

/// Names keys that come more than once in an object.
void noteRepeatedKeys(const ReadJson &object, QStringList &remarks)
{
    std::vector<std::string_view> keys;
    keys.reserve(object.size());
    for (const auto &item : object.items())
        keys.emplace_back(item.key());
    std::ranges::sort(keys);
    for (auto key = std::ranges::adjacent_find(keys); key != keys.end();) {
        remarks += quoted(*key) % QStringLiteral(" is given more than once; the last one is kept");
        key = std::adjacent_find(std::upper_bound(key, keys.end(), *key), keys.end());
    }
}

QString textFrom(std::string_view key, const ReadJson &json)
{
    if (!json.is_string())
        refuse(key, "must be a text");
    return textOfUtf8(json.get_ref<const std::string &>());
}

ABDictionary dictionaryFrom(ABProperty property, std::string_view key, const ReadJson &json, QStringList &remarks)
{
    if (!json.is_object())
        refuse(key, "must hold objects as its values");
    ABDictionary dictionary;
    const auto keys = keysOfProperty(property);
    for (const auto &[part, text] : json.items()) {
        const auto info =
            std::ranges::find_if(keys, [&part = part](const ABKeyInfo &k) { return name(k.name) == part; });
        if (info == keys.end())
            refuse(key, ("has an unknown part \"" + part + "\"").c_str());
        dictionary.setValue(textFrom(part, text), info->key);
    }
    noteRepeatedKeys(json, remarks);
    return dictionary;
}

ABMultiValue multiValueFrom(
    const ABPropertyInfo &property, std::string_view key, const ReadJson &json, QStringList &remarks)
{
    if (!json.is_array())
        refuse(key, "must be an array");
    ABMutableMultiValue value;
    for (const ReadJson &entry : json) {
        if (!entry.is_object() || !entry.contains(kValueName))
            refuse(key, "must hold objects with a \"value\"");
        QString label;
        const ReadJson *content = &entry.at(kValueName);
        for (const auto &[name, part] : entry.items()) {
            if (name == kLabelName)
                label = textFrom(kLabelName, part);
            else if (name == kValueName)
                content = &part;
            else
                refuse(key, "holds an entry with an unknown key");
        }
        noteRepeatedKeys(entry, remarks);
        if (property.kind == ABPropertyKind::MultiText)
            value.addValue(textFrom(key, *content), label);
        else
            value.addValue(dictionaryFrom(property.property, key, *content, remarks), label);
    }
    return value;
}

QDate dateFrom(std::string_view key, const ReadJson &json)
{
    const QString text = textFrom(key, json);
    const QDate date = QDate::fromString(text, Qt::ISODate);
    if (text.size() != 10 || !date.isValid())
        refuse(key, "must be a date that exists, as YYYY-MM-DD");
    return date;
}

QByteArray imageFrom(std::string_view key, const ReadJson &json, QStringList &remarks)
{
    constexpr qsizetype quantum = 4;
    const QByteArray base64 = textFrom(key, json).toUtf8();
    const auto bytes = QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors);
    if (!bytes || bytes.decoded.isEmpty())
        refuse(key, "must be base64 of a picture");
    const QByteArray end = base64.right(quantum);
    if (base64.size() % quantum != 0 || QByteArray::fromBase64(end).toBase64() != end)
        remarks += quoted(key) % QStringLiteral(" is incomplete base64; what there is of the picture is kept");
    return bytes.decoded;
}

ABValue valueFrom(const ABPropertyInfo &property, std::string_view key, const ReadJson &json, QStringList &remarks)
{
    switch (property.kind) {
    case ABPropertyKind::Text:
        return textFrom(key, json);
    case ABPropertyKind::Date:
        return dateFrom(key, json);
    case ABPropertyKind::Integer:
        if (!json.is_number_integer() || (json.is_number_unsigned() && json.get<quint64>() > quint64(INT64_MAX)))
            refuse(key, "must be an integer of at most 64 bits");
        return json.get<qint64>();
    case ABPropertyKind::MultiText:
    case ABPropertyKind::MultiDictionary:
        return multiValueFrom(property, key, json, remarks);
    case ABPropertyKind::ReadOnlyText:
        break;
    }
    refuse(key, "cannot be set");
}

ImportedRecord recordFrom(const ReadJson &json, QStringList &remarks)
{
    if (!json.is_object())
        throw Refusal{QStringLiteral("not a JSON object")};
    ImportedRecord imported;
    PersonRecord record;
    for (const auto &[key, value] : json.items()) {
        if (key == kUidName) {
            imported.uid = textFrom(key, value);
            if (imported.uid.isEmpty())
                refuse(key, "must not be empty");
        } else if (key == kImageName) {
            record.setImageData(imageFrom(key, value, remarks));
        } else if (const auto property = propertyNamed(QString::fromStdString(key))) {
            record.setValue(*property, valueFrom(propertyInfo(*property), key, value, remarks));
        } else {
            refuse(key, "is no property of a record");
        }
    }
    noteRepeatedKeys(json, remarks);
    imported.record = std::make_shared<const PersonRecord>(std::move(record));
    return imported;
}

} // namespace

std::string recordToJson(const QString &uid, const PersonRecord &record)
{
    Json json = Json::object();
    if (!uid.isNull())
        json[kUidName] = toJson(uid);
    for (const ABPropertyInfo &property : allProperties()) {
        Json value = std::visit(ToJson(), record.value(property.property));
        if (!value.is_null())
            json[name(property.name)] = std::move(value);
    }
    if (const QByteArray *image = record.imageData())
        json[kImageName] = image->toBase64().toStdString();
    return json.dump();
}

Result<ImportedRecord> recordFromJson(std::string_view line, QStringList *remarks)
{
    QStringList unwanted;
    try {
        return recordFrom(ReadJson::parse(line), remarks ? *remarks : unwanted);
    } catch (const Refusal &refusal) {
        return Error{ErrorKind::Invalid, refusal.reason};
    } catch (const Json::exception &exception) {
        const QString reason = QString::fromUtf8(exception.what());
        // The library's text begins with an identifier in brackets that tells a reader nothing.
        return Error{ErrorKind::Invalid, QStringLiteral("not valid JSON: ") % reason.section(QStringLiteral("] "), 1)};
    }
}

std::string keptLinesToJson(const std::vector<KeptLine> &lines)
{
    Json json = Json::array();
    for (const auto &line : lines)
        json.push_back(Json::array({toJson(line.text), line.basis.isNull() ? Json() : toJson(line.basis)}));
    return json.dump();
}

Result<std::vector<KeptLine>> keptLinesFromJson(std::string_view json)
{
    constexpr const char *what = "card lines";
    try {
        const ReadJson rows = ReadJson::parse(json);
        if (!rows.is_array())
            refuse(what, "must be an array");
        std::vector<KeptLine> lines;
        for (const ReadJson &row : rows) {
            if (!row.is_array() || row.size() != 2)
                refuse(what, "must hold pairs of texts");
            lines.push_back({textFrom(what, row[0]), row[1].is_null() ? QString() : textFrom(what, row[1])});
        }
        return lines;
    } catch (const Refusal &refusal) {
        return Error{ErrorKind::Invalid, refusal.reason};
    } catch (const Json::exception &exception) {
        return Error{ErrorKind::Invalid, QString::fromUtf8(exception.what())};
    }
}
