// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/cards/RecordJsonReader.h"

#include "contacts/model/TextPool.h"
#include "contacts/model/Utf8Text.h"

#include <simdjson.h>

#include <algorithm>
#include <bitset>

namespace ondemand = simdjson::ondemand;

namespace {

/// Thrown inside this file only, to leave a half-read object; read() turns it into an Error.
struct Refusal
{
    QString reason;
};

QString about(std::string_view key, const QString &what)
{
    return u'"' % QString::fromUtf8(key) % QStringLiteral("\" ") % what;
}

[[noreturn]] void refuse(std::string_view key, const QString &what)
{
    throw Refusal{about(key, what)};
}

[[noreturn]] void refuse(simdjson::error_code error)
{
    throw Refusal{QStringLiteral("not valid JSON: ") % QString::fromUtf8(simdjson::error_message(error))};
}

/// The value of @p result; one of another type than wanted is refused as one that "must be" something.
template <typename Value>
Value taken(simdjson::simdjson_result<Value> result, std::string_view key = {}, const char *mustBe = nullptr)
{
    Value value;
    const simdjson::error_code error = std::move(result).get(value);
    if (mustBe && error == simdjson::INCORRECT_TYPE)
        refuse(key, QString::fromLatin1(mustBe));
    if (error)
        refuse(error);
    return value;
}

std::string_view textIn(ondemand::value value, std::string_view key)
{
    return taken(value.get_string(), key, "must be a text");
}

QDate dateFrom(std::string_view key, std::string_view text)
{
    const QDate date = QDate::fromString(QString::fromUtf8(text), Qt::ISODate);
    if (text.size() != 10 || !date.isValid())
        refuse(key, QStringLiteral("must be a date that exists, as YYYY-MM-DD"));
    return date;
}

bool isName(QLatin1StringView name, std::string_view key)
{
    return std::string_view(name.data(), std::size_t(name.size())) == key;
}

std::vector<KeptLine> cardLinesFrom(std::string_view key, ondemand::value value)
{
    constexpr const char *kMustHoldPairs = "must hold pairs of texts";
    std::vector<KeptLine> lines;
    for (auto row : taken(value.get_array(), key, kMustHoldPairs)) {
        std::vector<QString> pair; // with a null one where the row says null
        for (auto element : taken(row.get_array(), key, kMustHoldPairs)) {
            ondemand::value text = taken(element);
            const bool isNull = pair.size() == 1 && taken(text.is_null()); // an error for "nul"
            pair.push_back(isNull ? QString() : textOfUtf8(textIn(text, key)));
        }
        if (pair.size() != 2)
            refuse(key, QString::fromLatin1(kMustHoldPairs));
        lines.push_back({pair[0], pair[1]});
    }
    return lines;
}

// Keys of an object beside the properties, as places in the set of those that were met.
enum OtherKey : std::size_t { Image = 64, Picture, CardLines, KeyCount };

} // namespace

class RecordJsonReader::Private
{
public:
    explicit Private(Form form) : m_form(form) { }

    Person read(std::string_view json)
    {
        m_met.reset();
        m_person = {{}, std::make_shared<PersonRecord>(), {}, {}, {}};
        m_copy.reserve(json.size() + simdjson::SIMDJSON_PADDING);
        m_copy.assign(json);
        auto document = taken(m_parser.iterate(m_copy));
        ondemand::object object;
        if (const auto error = document.get_object().get(object)) {
            if (error == simdjson::INCORRECT_TYPE)
                throw Refusal{QStringLiteral("not a JSON object")};
            refuse(error);
        }
        for (auto field : object) {
            const std::string_view key = taken(field.unescaped_key());
            readField(key, taken(field.value()));
        }
        if (document.current_location().error() != simdjson::OUT_OF_BOUNDS)
            refuse(simdjson::TRAILING_CONTENT);
        return std::move(m_person);
    }

private:
    void readField(std::string_view key, ondemand::value value)
    {
        if (const ABPropertyInfo *info = propertyOf(key)) {
            meet(std::size_t(info->property), key);
            readProperty(*info, key, value);
        } else if (key == "image") {
            meet(Image, key);
            m_person.record->setImageData(imageFrom(key, textIn(value, key)));
        } else if (m_form == Form::Document && key == "picture") {
            meet(Picture, key);
            m_person.pictureName = textIn(value, key);
        } else if (m_form == Form::Document && key == "cardLines") {
            meet(CardLines, key);
            m_person.record->setKeptLines(cardLinesFrom(key, value));
        } else {
            passOver(key, key, QStringLiteral("is no property of a record"));
        }
    }

    /// Null: it is no property's.
    const ABPropertyInfo *propertyOf(std::string_view key)
    {
        const auto properties = allProperties();
        for (std::size_t i = 0; i < properties.size(); ++i) {
            // Most texts have their keys in the order of the table.
            const ABPropertyInfo &info = properties[m_nextProperty];
            m_nextProperty = (m_nextProperty + 1) % properties.size();
            if (isName(info.name, key))
                return &info;
        }
        return nullptr;
    }

    void meet(std::size_t place, std::string_view key)
    {
        if (m_met.test(place))
            repeated(key);
        m_met.set(place);
    }

    void repeated(std::string_view key)
    {
        remark(key, QStringLiteral("is given more than once; the last one is kept"));
    }

    /// Nothing of a document may get lost; of a line that a stranger wrote, what can be read counts.
    void remark(std::string_view key, const QString &what)
    {
        if (m_form == Form::Document)
            refuse(key, what);
        if (const QString text = about(key, what); !m_person.remarks.contains(text))
            m_person.remarks += text;
    }

    /// A document may be from a later version; a line with what is @p unknown is refused for its @p key.
    void passOver(std::string_view unknown, std::string_view key, const QString &reason)
    {
        if (m_form == Form::Line)
            refuse(key, reason);
        if (m_person.unknownKey.empty())
            m_person.unknownKey = unknown;
    }

    void readProperty(const ABPropertyInfo &info, std::string_view key, ondemand::value value)
    {
        PersonRecord &record = *m_person.record;
        switch (info.kind) {
        case ABPropertyKind::Text:
            record.setText(info.property, textOfUtf8(textIn(value, key)));
            break;
        case ABPropertyKind::Date:
            record.setBirthday(dateFrom(key, textIn(value, key)));
            break;
        case ABPropertyKind::Integer: {
            int64_t number = 0;
            if (value.get_int64().get(number))
                refuse(key, QStringLiteral("must be an integer of at most 64 bits"));
            record.setFlags(number);
            break;
        }
        case ABPropertyKind::MultiText:
        case ABPropertyKind::MultiDictionary:
            m_entries.clear();
            for (auto element : taken(value.get_array(), key, "must be an array"))
                m_entries.push_back(entryFrom(info, key, taken(element)));
            record.setMultiValue(info.property, ABMultiValue(std::move(m_entries)));
            break;
        case ABPropertyKind::ReadOnlyText:
            m_person.uid = textOfUtf8(textIn(value, key));
            if (m_person.uid.isEmpty())
                refuse(key, QStringLiteral("must not be empty"));
            break;
        }
    }

    ABMultiValue::Entry entryFrom(const ABPropertyInfo &info, std::string_view key, ondemand::value value)
    {
        constexpr const char *kMustHoldObjects = "must hold objects with a \"value\"";
        ABMultiValue::Entry entry;
        bool hasLabel = false;
        bool hasValue = false;
        for (auto field : taken(value.get_object(), key, kMustHoldObjects)) {
            const std::string_view name = taken(field.unescaped_key());
            if (name != "label" && name != "value") {
                passOver(name, key, QStringLiteral("holds an entry with an unknown key"));
                continue;
            }
            if (std::exchange(name == "label" ? hasLabel : hasValue, true))
                repeated(name);
            if (name == "label")
                entry.label = m_texts.intern(textIn(taken(field.value()), "label"));
            else if (info.kind == ABPropertyKind::MultiText)
                entry.value = textOfUtf8(textIn(taken(field.value()), key));
            else
                entry.value = dictionaryFrom(info.property, key, taken(field.value()));
        }
        if (!hasValue)
            refuse(key, QString::fromLatin1(kMustHoldObjects));
        return entry;
    }

    ABDictionary dictionaryFrom(ABProperty property, std::string_view key, ondemand::value value)
    {
        ABDictionary dictionary;
        const auto keys = keysOfProperty(property);
        dictionary.reserve(keys.size());
        for (auto field : taken(value.get_object(), key, "must hold objects as its values")) {
            const std::string_view name = taken(field.unescaped_key());
            const auto part =
                std::ranges::find_if(keys, [name](const ABKeyInfo &each) { return isName(each.name, name); });
            if (part == keys.end()) {
                passOver(name, key, QStringLiteral("has an unknown part \"") % QString::fromUtf8(name) % u'"');
                continue;
            }
            if (dictionary.valueForKey(part->key))
                repeated(name);
            const std::string_view text = textIn(taken(field.value()), name);
            dictionary.setValue(isShared(part->key) ? m_texts.intern(text) : textOfUtf8(text), part->key);
        }
        return dictionary;
    }

    QByteArray imageFrom(std::string_view key, std::string_view text)
    {
        const QByteArray base64 = QByteArrayView(text).toByteArray();
        const auto bytes = QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors);
        if (!bytes || bytes.decoded.isEmpty())
            refuse(key, QStringLiteral("must be base64 of a picture"));
        if (bytes.decoded.toBase64() != base64)
            remark(key, QStringLiteral("is incomplete base64; what there is of the picture is kept"));
        return bytes.decoded;
    }

    const Form m_form;
    ondemand::parser m_parser;
    TextPool m_texts;
    std::string m_copy; // of the text, with room behind it
    Person m_person; // the one being read
    std::size_t m_nextProperty = 0;
    std::bitset<KeyCount> m_met;
    std::vector<ABMultiValue::Entry> m_entries; // reused from list to list
};

RecordJsonReader::RecordJsonReader(Form form) : d(std::make_unique<Private>(form)) { }

RecordJsonReader::~RecordJsonReader() = default;

Result<RecordJsonReader::Person> RecordJsonReader::read(std::string_view json)
{
    try {
        return d->read(json);
    } catch (const Refusal &refusal) {
        return Error{ErrorKind::Invalid, refusal.reason};
    }
}
