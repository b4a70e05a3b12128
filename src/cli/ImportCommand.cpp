// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"

#include "contacts/book/RecordImporter.h"
#include "contacts/model/Utf8Text.h"
#include "contacts/stores/open/FilePath.h"
#include "contacts/stores/open/OutsideFile.h"

#include <QFileInfo>

#include <iterator>

namespace {

/// One line on the terminal that is written over until the file is read.
class ProgressLine
{
public:
    ProgressLine(const Console &console, QString file) : m_console(console), m_file(std::move(file)) { }
    ~ProgressLine()
    {
        if (m_percent >= 0)
            m_console.err << "\r\033[K" << std::flush;
    }
    ProgressLine(const ProgressLine &) = delete;
    ProgressLine &operator=(const ProgressLine &) = delete;

    void show(qint64 done, qint64 total)
    {
        const int percent = total > 0 ? int(100 * done / total) : 100;
        if (!m_console.errIsTerminal || percent == m_percent)
            return;
        m_percent = percent;
        m_console.err << '\r' << onOneLine(m_file) << ": " << percent << " %" << std::flush;
    }

private:
    const Console &m_console;
    QString m_file;
    int m_percent = -1;
};

Result<QByteArray> contentOf(const QString &name, const ABAddressBook &book, std::istream &in)
{
    if (name == QStringLiteral("-"))
        return QByteArray::fromStdString({std::istreambuf_iterator<char>(in), {}});
    const auto path = filePath(name);
    return path ? readOutsideFile(*path, book.file()) : path.error();
}

/// Prints what could not be imported. False when something was lost; a group that was left out is no loss.
bool reportProblems(const QString &file, RecordSource &source, const CommandContext &context)
{
    bool nothingLost = true;
    for (const auto &problem : source.takeProblems()) {
        context.report(file % QLatin1Char(':') % QString::number(problem.line) % QStringLiteral(": ") % problem.reason);
        nothingLost = nothingLost && problem.kind == ImportProblem::Kind::NotAPerson;
    }
    return nothingLost;
}

} // namespace

ExitStatus runImport(const ImportOptions &options, const CommandContext &context)
{
    const auto book = context.openAddressBookForChange();
    if (!book)
        return ExitStatus::Refused;
    RecordImporter importer(*book,
        options.replace ? RecordImporter::OnOtherContent::Replace : RecordImporter::OnOtherContent::AddUnderNewUid);
    ExitStatus status = ExitStatus::Done;
    qint64 saved = 0;
    for (const auto &argument : options.files) {
        const QString file = textOfUtf8(argument);
        const auto content = contentOf(file, *book, context.console.in);
        if (!content) {
            context.report(content.error().text);
            status = ExitStatus::Refused;
            continue;
        }
        const CauseScope cause(ChangeCause::Kind::Import,
            file == QStringLiteral("-") ? QStringLiteral("standard input") : QFileInfo(file).fileName());
        const auto format = options.format.empty() ? formatOfContent(*content)
            : options.format == "jsonl"            ? RecordFormat::JsonLines
                                                   : RecordFormat::VCard;
        const auto source = recordSource(*content, format);
        {
            ProgressLine progress(context.console, file);
            importer.addAll(*source, [&progress](qint64 done, qint64 total) {
                progress.show(done, total);
                return true;
            });
        }
        if (!reportProblems(file, *source, context))
            status = ExitStatus::Refused;
        Error error;
        if (!book->save(&error)) {
            context.report(file % QStringLiteral(": not imported: ") % error.text);
            status = ExitStatus::Refused;
            break; // what this file brought is still pending; the next file's save would write it after all
        }
        saved = importer.importedCount();
    }
    if (importer.alreadyThereCount() > 0)
        context.console.out << "Already there: " << importer.alreadyThereCount() << ".\n";
    context.console.out << "Imported " << saved << " contacts.\n";
    return status;
}
