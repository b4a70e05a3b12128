// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/ExportContact.h"

#include "export/formats/DocumentCreators.h"
#include "export/formats/ExportCSV.h"
#include "export/formats/ExportTXT.h"
#include "export/formats/ExportToHtml.h"
#include "export/formats/ExportVCard.h"
#include "export/formats/XlsxCreater.h"
#include "table/grid/LoadContactsViewController.h"

#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QPointer>

#include <array>

namespace {

Q_LOGGING_CATEGORY(lcExport, "peoplenook.export")

const QString kBaseName = QStringLiteral("/Multi-Contacts");

PersonRows shownFieldsOf(const PersonRows &rows, const std::vector<Field> &columns)
{
    PersonRows copies;
    copies.reserve(rows.size());
    for (const PersonRow &row : rows)
        copies.push_back(std::make_shared<const PersonDictionary>(row->withFields(columns)));
    return copies;
}

bool isAllFields(const ExportSource &source)
{
    return source.matrix == ExportContact::kAllFieldsTag;
}

PersonRows rowsOf(const ExportSource &source)
{
    return isAllFields(source) ? source.exportArray : shownFieldsOf(source.tableRows, source.columns);
}

/// The same; the rows of an export of the shown fields are also written to the log, many in one message: a message for
/// each would push all others out of the list of activities.
PersonRows tracedRowsOf(const ExportSource &source)
{
    constexpr qsizetype kRowsInMessage = 1000;
    PersonRows rows = rowsOf(source);
    if (isAllFields(source) || !lcExport().isDebugEnabled())
        return rows;
    QStringList lines;
    for (const PersonRow &row : rows) {
        QStringList texts;
        for (const auto &entry : row->entries())
            texts += fieldInfo(entry.field()).label % QStringLiteral(" = ") % row->text(entry);
        QString line = texts.join(QStringLiteral("; "));
        std::ranges::replace_if(
            line, [](QChar c) { return c.category() == QChar::Other_Control; }, QChar(u' '));
        lines += line;
        if (lines.size() == kRowsInMessage || &row == &rows.back())
            qCDebug(lcExport, "%s", qUtf8Printable(std::exchange(lines, {}).join(u'\n')));
    }
    return rows;
}

void logOutcome(const ExportOutcome &outcome, const QString &folder)
{
    const ExportReport &report = outcome.report;
    const QString files = report.paths.size() == 1
        ? report.paths.front()
        : QStringLiteral("%1 files in %2").arg(report.paths.size()).arg(folder);
    qCInfo(lcExport).noquote().nospace() << outcome.format << ": " << files << ", " << outcome.rows << " rows, "
                                         << outcome.milliseconds << " ms";
    if (!report.repairs.isEmpty())
        qCWarning(lcExport).noquote().nospace() << outcome.format << ": " << report.repairs.description();
    if (!report.remark.isEmpty())
        qCInfo(lcExport).noquote().nospace() << outcome.format << ": " << report.remark;
    if (report.error)
        qCWarning(lcExport).noquote().nospace() << outcome.format << ": " << report.error->text;
}

} // namespace

std::span<const ExportContact::Format> ExportContact::formats()
{
    static const auto formats = std::to_array<Format>({
        {QStringLiteral("Save to Excel"), QStringLiteral("excel"), kBaseName, &ExportContact::exportExcelToDesPath},
        {QStringLiteral("Save to HTML"), QStringLiteral("html"), kBaseName, &ExportContact::exportHtmlToDesPath},
        {QStringLiteral("Save to Pages"), QStringLiteral("pages"), kBaseName, &ExportContact::exportPagesToDesPath},
        {QStringLiteral("Save to Numbers"), QStringLiteral("numbers"), kBaseName,
            &ExportContact::exportNumbersToDesPath},
        {QStringLiteral("Save to CSV"), QStringLiteral("csv"), QString(), &ExportContact::exportCsvToDesPath},
        {QStringLiteral("Save to Docx"), QStringLiteral("docx"), kBaseName, &ExportContact::exportDocxToDesPath},
        {QStringLiteral("Save to vCard"), QStringLiteral("vcard"), QString(), &ExportContact::exportVcfToDesPath},
        {QStringLiteral("Save to TXT"), QStringLiteral("txt"), QString(), &ExportContact::exportTxtToDesPath},
    });
    return formats;
}

ExportContact::ExportContact(ExportPanel &panel, QObject *parent) : QObject(parent), m_panel(panel) { }

ExportContact::~ExportContact()
{
    waitForFinished();
}

void ExportContact::setLoadContactsViewController(const LoadContactsViewController *controller)
{
    m_loadContactsViewController = controller;
}

void ExportContact::startExport()
{
    m_panel.beginSheet([self = QPointer(this)](const std::optional<ExportChoice> &choice) {
        if (self)
            self->panelDidEnd(choice);
    });
}

PersonRows ExportContact::copyDictionaryDataSoucre() const
{
    const ExportSource current = source(kTableFieldsTag);
    return shownFieldsOf(current.tableRows, current.columns);
}

ExportSource ExportContact::source(int matrix) const
{
    ExportSource source{m_exportArray, m_exportArray, {}, matrix};
    if (m_loadContactsViewController) {
        source.columns = m_loadContactsViewController->getTableView()->columns();
        if (m_isExportAllPeople)
            source.tableRows = m_loadContactsViewController->getTableViewDataArray();
    }
    return source;
}

void ExportContact::panelDidEnd(const std::optional<ExportChoice> &choice)
{
    if (!choice || (choice->matrix != kAllFieldsTag && choice->matrix != kTableFieldsTag))
        return;
    const auto format = std::ranges::find(formats(), choice->selectedButton, &Format::title);
    if (format == formats().end())
        return;
    m_running.remove_if([](const Job &job) { return !job.isRunning(); });
    m_running.emplace_back().start([this, &format = *format, folder = choice->folder, source = source(choice->matrix)] {
        run(format, folder, source);
    });
}

void ExportContact::run(const Format &format, const QString &folder, const ExportSource &source)
{
    QElapsedTimer timer;
    timer.start();
    ExportOutcome outcome;
    outcome.format = format.title;
    outcome.report = format.write(folder + format.fileName, source);
    const PersonRows &rows = source.matrix == kAllFieldsTag ? source.exportArray : source.tableRows;
    // A format of one file a row keeps those that came before the failure; the others keep nothing.
    outcome.rows = outcome.report.error ? outcome.report.paths.size() : static_cast<qint64>(rows.size());
    outcome.milliseconds = timer.elapsed();
    logOutcome(outcome, folder);
    Q_EMIT exportFinished(outcome);
}

void ExportContact::waitForFinished()
{
    for (const Job &job : m_running)
        job.wait();
    m_running.clear();
}

ExportReport ExportContact::exportExcelToDesPath(const QString &toDesPath, const ExportSource &source)
{
    return XlsxCreater(tracedRowsOf(source), toDesPath, isAllFields(source)).startConvert();
}

ExportReport ExportContact::exportHtmlToDesPath(const QString &toDesPath, const ExportSource &source)
{
    return ExportToHtml(rowsOf(source), toDesPath, isAllFields(source)).writeHtml();
}

ExportReport ExportContact::exportPagesToDesPath(const QString &toDesPath, const ExportSource &source)
{
    PagesCreator creator;
    creator.initWithDictionary(rowsOf(source), toDesPath, isAllFields(source));
    return creator.startConvert();
}

ExportReport ExportContact::exportNumbersToDesPath(const QString &toDesPath, const ExportSource &source)
{
    NumbersCreator creator;
    creator.initWithDictionary(tracedRowsOf(source), toDesPath, isAllFields(source));
    return creator.startConvert();
}

ExportReport ExportContact::exportCsvToDesPath(const QString &toDesPath, const ExportSource &source)
{
    ExportReport report;
    ExportCSV().writeCSVFileWithArray(rowsOf(source), toDesPath, isAllFields(source), &report);
    return report;
}

ExportReport ExportContact::exportDocxToDesPath(const QString &toDesPath, const ExportSource &source)
{
    DocxCreator creator;
    creator.initWithDictionary(rowsOf(source), toDesPath);
    return creator.startConvert();
}

ExportReport ExportContact::exportVcfToDesPath(const QString &toDesPath, const ExportSource &source)
{
    ExportReport report;
    ExportVCard().exportVcardWithArray(rowsOf(source), toDesPath, &report);
    return report;
}

ExportReport ExportContact::exportTxtToDesPath(const QString &toDesPath, const ExportSource &source)
{
    ExportReport report;
    ExportTXT().writeTXTFileWithArray(rowsOf(source), toDesPath, isAllFields(source), &report);
    return report;
}
