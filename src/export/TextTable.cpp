// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/TextTable.h"

#include "export/OutputFile.h"
#include "export/RowBlocks.h"
#include "export/Utf8Output.h"

namespace {

void writeLabels(Utf8Output &output, const ExportColumns &columns, const TextTableStyle &style)
{
    for (const ExportColumn &column : columns) {
        output.write(style.beforeLabel);
        output.write(column.label);
        output.write(style.afterLabel);
    }
    output.write('\n');
}

std::string absentCells(const TextTableStyle &style, std::size_t count)
{
    std::string cells;
    for (std::size_t i = 0; i < count; ++i)
        cells += style.absent;
    return cells;
}

/// Most cells of most rows are absent, so runs of them are written at once, from @p absentRun.
void writeValues(Utf8Output &output, const RowTexts &texts, const ExportColumns &columns, const TextTableStyle &style,
    std::string_view absentRun)
{
    const std::size_t absentSize = style.absent.size();
    std::size_t absent = 0;
    for (const ExportColumn &column : columns) {
        const QString *text = texts.at(column.field);
        if (!text) {
            ++absent;
            continue;
        }
        output.write(absentRun.substr(0, absent * absentSize));
        absent = 0;
        output.write(style.beforeValue);
        output.write(*text);
        output.write(style.afterValue);
    }
    output.write(absentRun.substr(0, absent * absentSize));
}

bool report(const Result<QString> &written, ExportReport *report)
{
    ExportReport unwanted;
    return (report ? report : &unwanted)->take(written);
}

} // namespace

Result<void> writeTextTable(
    QIODevice &target, std::span<const PersonRow> rows, const ExportColumns &columns, const TextTableStyle &style)
{
    Utf8Output head(target);
    writeLabels(head, columns, style);
    if (auto written = head.finish(); !written)
        return written;
    const std::string absentRun = absentCells(style, columns.size());
    return writeRowBlocks(target, rows, [&](Utf8Output &output, std::span<const PersonRow> block) {
        RowTexts texts;
        for (std::size_t i = 0; i < block.size(); ++i) {
            fetchAhead(block, i);
            texts.read(*block[i]);
            writeValues(output, texts, columns, style, absentRun);
            output.write('\n');
        }
    });
}

bool writeTextTableFile(const TextTableFile &file, const PersonRows &rows, const ExportColumns &columns,
    const TextTableStyle &style, ExportReport *report)
{
    const QLatin1StringView name(file.isAllFields ? "Multi-Contacts" : "allPeople");
    const QString path = file.folder % u'/' % name % u'.' % file.extension;
    const auto fill = [&](QIODevice &target) { return writeTextTable(target, rows, columns, style); };
    return ::report(OutputFile::write(path, fill), report);
}

bool writePersonFile(const QString &folder, const QString &extension, const PersonDictionary &row,
    const TextTableStyle &style, ExportReport *report)
{
    const auto nameOf = [&row](
                            Field field) { return row.contains(field) ? row.text(field) : QStringLiteral("(null)"); };
    const QString name = nameOf(Field::FirstName) % nameOf(Field::LastName) % u'.' % extension;
    if (name.contains(u'/') || name.contains(QChar::Null))
        return ::report(Error{ErrorKind::Invalid, name % QStringLiteral(": cannot be the name of a file")}, report);
    const auto fill = [&](QIODevice &target) {
        const ExportColumns columns = columnsOf(row);
        Utf8Output output(target);
        writeLabels(output, columns, style);
        RowTexts texts;
        texts.read(row);
        writeValues(output, texts, columns, style, absentCells(style, columns.size()));
        return output.finish();
    };
    return ::report(OutputFile::write(folder % u'/' % name, fill), report);
}
