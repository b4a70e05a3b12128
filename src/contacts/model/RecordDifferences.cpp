// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/model/RecordDifferences.h"

#include "contacts/model/ABLabels.h"

#include <QCoreApplication>

namespace {

QString textOf(const ABMultiValue::Entry &entry)
{
    const QString value = valueText(entry.value);
    return entry.label.isEmpty() ? value : QString(readableLabel(entry.label) % QStringLiteral(": ") % value);
}

struct ToText
{
    QString operator()(std::monostate) const { return {}; }
    QString operator()(const QString &text) const { return text; }
    QString operator()(QDate date) const { return date.toString(Qt::ISODate); }
    QString operator()(qint64 number) const { return QString::number(number); }
    QString operator()(const ABMultiValue &values) const
    {
        QStringList texts;
        for (const auto &entry : values.entries())
            texts += textOf(entry);
        return texts.isEmpty() ? QStringLiteral("") : texts.join(QStringLiteral("; "));
    }
};

QString cardLinesText(const PersonRecord &record)
{
    QStringList lines;
    for (const KeptLine &line : record.keptLines())
        lines += line.text;
    return lines.isEmpty() ? QString() : lines.join(QStringLiteral("; "));
}

} // namespace

QString propertyTitle(QLatin1StringView name)
{
    if (const auto property = propertyNamed(QString(name)))
        return propertyTitle(*property);
    return name == kPictureName ? QCoreApplication::translate("Property", "Picture")
                                : QCoreApplication::translate("Property", "More from the card");
}

QString valueText(const ABValue &value)
{
    return std::visit(ToText(), value);
}

QString valueText(const ABMultiValue::Value &value)
{
    if (const auto *text = std::get_if<QString>(&value))
        return *text;
    QStringList parts;
    for (const auto &[key, part] : std::get<ABDictionary>(value))
        parts += part;
    return parts.join(QStringLiteral(", "));
}

QString pictureText(const PersonRecord &record)
{
    const QByteArray *image = record.imageData();
    return image ? QStringLiteral("%1 bytes").arg(image->size()) : QString();
}

std::vector<RecordDifference> recordDifferences(const PersonRecord *before, const PersonRecord *after)
{
    static const PersonRecord empty;
    const PersonRecord &was = before ? *before : empty;
    const PersonRecord &is = after ? *after : empty;
    std::vector<RecordDifference> differences;
    for (const ABPropertyInfo &info : allProperties()) {
        const ABValue old = was.value(info.property);
        const ABValue value = is.value(info.property);
        if (old != value)
            differences.push_back({info.name, valueText(old), valueText(value)});
    }
    if (!was.hasImageOf(is))
        differences.push_back({kPictureName, pictureText(was), pictureText(is)});
    if (was.keptLines() != is.keptLines())
        differences.push_back({kCardLinesName, cardLinesText(was), cardLinesText(is)});
    return differences;
}
