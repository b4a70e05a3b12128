// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CommandContext.h"

#include "contacts/model/Utf8Text.h"
#include "contacts/stores/open/Backups.h"
#include "contacts/stores/open/FilePath.h"
#include "contacts/stores/open/OpenStore.h"
#include "contacts/stores/open/Rescue.h"

void CommandContext::report(const QString &line) const
{
    console.err << onOneLine(line) << '\n';
}

void CommandContext::reportMissing(const QString &uid) const
{
    report(uid % QStringLiteral(": no contact has this uid"));
}

std::optional<QString> CommandContext::path(const std::string &argument) const
{
    const auto path = filePath(textOfUtf8(argument));
    if (path)
        return *path;
    report(path.error().text);
    return std::nullopt;
}

std::shared_ptr<ABAddressBook> CommandContext::openAddressBook() const
{
    const auto refuse = [this](const Error &error) {
        report(error.text % Rescue::hintFor(where, error));
        return nullptr;
    };
    auto store = openStore(where);
    if (!store)
        return refuse(store.error());
    const AddressBookStore &opened = **store;
    auto book = ABAddressBook::open(std::move(*store));
    if (!book)
        return refuse(book.error());
    if (const QString damage = damageFoundIn(opened); !damage.isEmpty())
        report(damage);
    ABAddressBook::setSharedAddressBook(*book);
    return *book;
}

std::shared_ptr<ABAddressBook> CommandContext::openAddressBookForChange() const
{
    auto book = openAddressBook();
    if (!book)
        return book;
    if (!book->canWrite()) {
        report(book->readOnlyReason().text);
        return nullptr;
    }
    const auto made = makeDailyBackup(*book, QDate::currentDate());
    if (made)
        return book;
    report(made.error().text % Rescue::hintFor(where, made.error()));
    // What makes the copy refuses a damaged book, parts of which may not have been read until now.
    return made.error().kind == ErrorKind::Invalid ? nullptr : book;
}

QStringList textsOf(const std::vector<std::string> &arguments)
{
    QStringList texts;
    for (const std::string &argument : arguments)
        texts += textOfUtf8(argument);
    return texts;
}

std::string onOneLine(QString text)
{
    for (QChar &c : text) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = u' ';
    }
    return text.toStdString();
}

QList<ABPersonPtr> peopleNamed(const QStringList &uids, const ABAddressBook &book, const CommandContext &context)
{
    QList<ABPersonPtr> people;
    for (const QString &uid : uids) {
        const ABPersonPtr person = book.personWithUniqueId(uid);
        if (!person)
            context.reportMissing(uid);
        else if (people.contains(person))
            context.report(uid % QStringLiteral(": is named twice"));
        else
            people += person;
    }
    return people.size() == uids.size() ? people : QList<ABPersonPtr>();
}

QString textOf(const RecordDifference &difference)
{
    const auto shown = [](const QString &text) {
        return text.isNull() ? QStringLiteral("nothing") : QString(u'"' % text % u'"');
    };
    return difference.name % QStringLiteral(": ") % shown(difference.before) % QStringLiteral(" -> ")
        % shown(difference.after);
}

QString countsText(qint64 added, qint64 changed, qint64 removed)
{
    QStringList texts;
    for (const auto &[count, name] : {std::pair(added, "added"), {changed, "changed"}, {removed, "removed"}}) {
        if (count > 0)
            texts += QStringLiteral("%1 %2").arg(count).arg(QLatin1StringView(name));
    }
    return texts.isEmpty() ? QStringLiteral("nothing changed") : texts.join(QStringLiteral(", "));
}

ExitStatus applyAndReport(ABAddressBook &book, const Result<RestorePlan> &plan, const CommandContext &context)
{
    if (!plan)
        return context.refuse(plan.error().text);
    if (const auto applied = restore(book, *plan); !applied)
        return context.refuse(applied.error().text);
    context.console.out << "Restored: " << countsText(plan->added, plan->changed, plan->removed).toStdString() << ".\n";
    return ExitStatus::Done;
}
