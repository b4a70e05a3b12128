// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/TextTable.h"

#include "export/formats/OutputFile.h"
#include "export/formats/Utf8Output.h"

namespace {

void writeLabels(Utf8Output &output, const ExportColumns &columns, const TextTableStyle &style)
{
    for (const ExportColumn &column : columns) {
        output.write(style.beforeLabel);
        output.write(column.label);
        output.write(style.afterLabel);
    }
    output.write("\n");
}

void writeValues(Utf8Output &output, const RowTexts &texts, const ExportColumns &columns, const TextTableStyle &style)
{
    for (const ExportColumn &column : columns) {
        const QString *text = texts.at(column.field);
        if (!text) {
            output.write(style.absent);
            continue;
        }
        output.write(style.beforeValue);
        output.write(*text);
        output.write(style.afterValue);
    }
}

bool take(const Result<QString> &written, ExportReport *report)
{
    ExportReport unwanted;
    return (report ? report : &unwanted)->take(written);
}

} // namespace

Result<void> writeTextTable(
    QIODevice &target, std::span<const PersonRow> rows, const ExportColumns &columns, const TextTableStyle &style)
{
    Utf8Output output(target);
    writeLabels(output, columns, style);
    RowTexts texts;
    for (const PersonRow &row : rows) {
        if (output.hasFailed())
            break;
        texts.read(*row);
        writeValues(output, texts, columns, style);
        output.write("\n");
    }
    return output.finish();
}

bool writeTextTableFile(const QString &folder, QLatin1StringView name, const PersonRows &rows,
    const ExportColumns &columns, const TextTableStyle &style, ExportReport *report)
{
    const QString path = folder % u'/' % name % u'.' % style.extension;
    const auto fill = [&](QIODevice &target) { return writeTextTable(target, rows, columns, style); };
    return take(OutputFile::write(path, fill), report);
}

bool writePersonFile(
    const QString &folder, const PersonDictionary &row, const TextTableStyle &style, ExportReport *report)
{
    RowTexts texts;
    texts.read(row);
    const auto nameOf = [&texts](Field field) { return texts.at(field) ? *texts.at(field) : QStringLiteral("(null)"); };
    const QString name = nameOf(Field::FirstName) % nameOf(Field::LastName) % u'.' % style.extension;
    if (name.contains(u'/') || name.contains(QChar::Null))
        return take(Error{ErrorKind::Invalid, name % QStringLiteral(": cannot be the name of a file")}, report);
    const auto fill = [&](QIODevice &target) {
        Utf8Output output(target);
        writeLabels(output, columnsOf(row), style);
        writeValues(output, texts, columnsOf(row), style);
        return output.finish();
    };
    return take(OutputFile::write(folder % u'/' % name, fill), report);
}
