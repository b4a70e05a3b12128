// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Commands.h"
#include "cli/ProgressLine.h"
#include "contacts/book/RecordImporter.h"
#include "contacts/model/Utf8Text.h"
#include "contacts/stores/open/FilePath.h"
#include "contacts/stores/open/OutsideFile.h"

#include <QFileInfo>

#include <iterator>

namespace {

Result<QByteArray> contentOf(const QString &name, const ABAddressBook &book, std::istream &in)
{
    if (name == QStringLiteral("-"))
        return QByteArray::fromStdString({std::istreambuf_iterator<char>(in), {}});
    const auto path = filePath(name);
    return path ? readOutsideFile(*path, book.file()) : path.error();
}

/// Prints what could not be imported. False when something was lost; a group that was left out is no loss.
bool reportProblems(const QString &file, const std::vector<ImportProblem> &problems, const CommandContext &context)
{
    bool nothingLost = true;
    for (const auto &problem : problems) {
        context.report(file % u':' % QString::number(problem.line) % QStringLiteral(": ") % problem.reason);
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
    ExitStatus status = ExitStatus::Done;
    qint64 imported = 0;
    qint64 alreadyThere = 0;
    for (const auto &argument : options.files) {
        const QString file = textOfUtf8(argument);
        auto content = contentOf(file, *book, context.console.in);
        if (!content) {
            context.report(content.error().text);
            status = ExitStatus::Refused;
            continue;
        }
        const auto format = options.format.empty() ? formatOfContent(*content)
            : options.format == "jsonl"            ? RecordFormat::JsonLines
                                                   : RecordFormat::VCard;
        auto source = recordSource(*content, format);
        content = QByteArray(); // goes with the source, before the save
        const QString name =
            file == QStringLiteral("-") ? QStringLiteral("standard input") : QFileInfo(file).fileName();
        const ImportReport report = [&] {
            ProgressLine progress(context.console, file % QStringLiteral(": "));
            return importFile(
                *book, std::move(source), name,
                [&progress](qint64 done, qint64 total) {
                    progress.show(total > 0 ? int(100 * done / total) : 100);
                    return true;
                },
                options.replace ? OnOtherContent::Replace : OnOtherContent::AddUnderNewUid);
        }();
        if (!reportProblems(file, report.problems, context))
            status = ExitStatus::Refused;
        if (report.error) {
            context.report(file % QStringLiteral(": not imported: ") % report.error->text);
            status = ExitStatus::Refused;
            break; // what refuses one file refuses the next
        }
        imported += report.imported;
        alreadyThere += report.alreadyThere;
    }
    if (alreadyThere > 0)
        context.console.out << "Already there: " << alreadyThere << ".\n";
    context.console.out << "Imported " << imported << " contacts.\n";
    return status;
}
