// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/compare/CompareText.h"

#include "app/look/ContactPicture.h"
#include "app/look/Counted.h"
#include "contacts/model/ABLabels.h"
#include "contacts/model/NameTexts.h"
#include "contacts/model/RecordDifferences.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

QString text(const char *english)
{
    return QCoreApplication::translate("CompareWindow", english);
}

QString textOf(const LostValue &value)
{
    const auto known = std::ranges::find(allProperties(), value.name, &ABPropertyInfo::name);
    if (known == allProperties().end())
        return text("Card line: %1").arg(value.text);
    return propertyTitle(known->property) % QStringLiteral(": ") % value.text;
}

} // namespace

QPixmap recordPicture(const PersonRecord &record, int size, qreal ratio, const QString &uid)
{
    const QByteArray *image = record.imageData();
    return personPicture(image ? *image : QByteArray(), size, ratio, uid);
}

QString nameOf(const PersonRecord &record)
{
    const QString name = readableName(record);
    return name.isEmpty() ? text("No name") : name;
}

QString titleOf(const std::vector<PersonRecordPtr> &records)
{
    const QString name = nameOf(*records.front());
    const bool isOneName = std::ranges::all_of(records, [&](const auto &record) { return nameOf(*record) == name; });
    const QString contacts = text("%1 contacts").arg(records.size());
    return isOneName ? text("%1 named %2").arg(contacts, name) : contacts;
}

QString titleOf(const Comparison::Row &row)
{
    if (!row.property)
        return text("Picture");
    const QString title = propertyTitle(*row.property);
    return row.label.isEmpty() ? title : QString(title % QStringLiteral(" · ") % readableLabel(row.label));
}

QString shownText(const Comparison::Row &row, const Comparison::Cell &cell)
{
    if (row.property == kABPersonFlags && !cell.text.isNull())
        return cell.text.toLongLong() & kABShowAsCompany ? text("shown as a company") : text("shown as a person");
    return cell.text.isNull() || !cell.text.isEmpty() ? cell.text : text("(empty)");
}

QString sameText(const Comparison::Row &row)
{
    if (row.property == kABPhoneProperty)
        return text("same number");
    return row.property == kABAddressProperty ? text("same address") : text("same value");
}

bool isEmpty(const Comparison::Row &row)
{
    return std::ranges::all_of(row.cells, [](const Comparison::Cell &cell) { return cell.text.isEmpty(); });
}

bool isLost(const Comparison::Row &row, std::size_t contact, const std::vector<LostValue> &lost)
{
    const QLatin1StringView name = row.property ? propertyInfo(*row.property).name : kPictureName;
    return std::ranges::any_of(
        lost, [&](const LostValue &value) { return value.name == name && value.text == row.cells[contact].text; });
}

MergeSummary summaryOf(const std::vector<PersonRecordPtr> &records, const PersonRecord &result)
{
    QStringList values;
    qsizetype pictures = 0;
    for (const LostValue &value : lostValues(records, {std::make_shared<const PersonRecord>(result)})) {
        if (value.name == kPictureName)
            ++pictures;
        else
            values += textOf(value);
    }
    QStringList parts{text("%1 become 1").arg(counted(qsizetype(records.size()), text("contact"), text("contacts")))};
    if (!values.isEmpty())
        parts +=
            values.size() == 1 ? text("1 value is left behind") : text("%1 values are left behind").arg(values.size());
    if (pictures > 0)
        parts += pictures == 1 ? text("1 picture stays in the history only")
                               : text("%1 pictures stay in the history only").arg(pictures);
    if (parts.size() == 1)
        parts += text("nothing is left behind");
    return {parts.join(QStringLiteral(" · ")), values};
}
