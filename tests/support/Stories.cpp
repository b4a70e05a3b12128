// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Stories.h"

#include "contacts/book/RecordImporter.h"
#include "contacts/book/RestorePlan.h"
#include "contacts/cards/RecordJson.h"
#include "support/FailingStore.h"
#include "support/TestPeople.h"

#include <QTest>

#include <atomic>

namespace {

QString u(const char *text)
{
    return QString::fromUtf8(text);
}

QMap<QString, ChangeCausePtr> causes; // of the story that is played

/// One that has the address book open, as a bare store until a step needs a book.
struct Program
{
    std::unique_ptr<FailingStore> own;
    FailingStore &store = *own;
    std::shared_ptr<ABAddressBook> opened = {};
    int calls = 0;
    std::shared_ptr<std::atomic<int>> heard = std::make_shared<std::atomic<int>>(0);

    ABAddressBook &book()
    {
        if (!opened)
            opened = *ABAddressBook::open(std::move(own));
        return *opened;
    }
};
using Step = std::function<QStringList(Program &, const QString &rest)>;

QStringList said(const Result<void> &result)
{
    static const QStringList kinds{u("not found"), u("conflict"), u("read-only"), u("unavailable"), u("invalid"),
        u("input/output"), u("cancelled")};
    return result ? QStringList() : QStringList(kinds.at(int(result.error().kind)) + u(": ") + result.error().text);
}
QStringList said(bool isDone, const Error &error)
{
    return isDone ? QStringList() : said(error);
}

/// "-" for nobody; lines of a card follow after " + ".
PersonRecordPtr recordIn(const QString &text)
{
    if (text == u("-"))
        return nullptr;
    auto record = std::make_shared<PersonRecord>(*recordFromText(text.section(u(" + "), 0, 0).toUtf8()).record);
    std::vector<KeptLine> lines;
    for (const QString &line : text.split(u(" + ")).mid(1)) {
        const qsizetype basis = line.indexOf(u(" of "));
        lines.push_back({line.left(basis), basis < 0 ? QString() : line.mid(basis + 4)});
    }
    record->setKeptLines(lines);
    return record;
}
QString textOf(const QString &uid, const PersonRecordPtr &record)
{
    QString text = record ? QString::fromStdString(recordToJson(uid, *record)).replace(u'"', u'\'') : uid + u(" -");
    for (const KeptLine &line : record ? record->keptLines() : std::vector<KeptLine>())
        text += u(" + ") + line.text + (line.basis.isNull() ? QString() : u(" of ") + line.basis);
    return text.replace(u'\n', u'|');
}
/// "uid before > after" of each, between semicolons.
std::vector<RecordChange> changesIn(const QString &text)
{
    std::vector<RecordChange> changes;
    for (const QString &each : text.split(u(" ; "))) {
        const QString states = each.section(u' ', 1);
        changes.push_back({each.section(u' ', 0, 0), recordIn(states.section(u(" > "), 0, 0)),
            recordIn(states.section(u(" > "), 1))});
    }
    return changes;
}
QStringList look(AddressBookStore &store)
{
    const auto changes = store.takeChangesFromOutside();
    QStringList texts;
    for (const StoredRecord &change : *changes)
        texts += textOf(change.uid, change.record);
    texts.sort();
    return texts;
}
QStringList hear(Program &program)
{
    return {QTest::qWaitFor([&program] { return *program.heard > 0; }, 20'000) ? u("heard") : u("nothing")};
}

QStringList historyOf(ABAddressBook &book)
{
    const auto history = book.history();
    QStringList lines;
    for (const ChangeSummary &step : *history)
        lines += u("%1 +%2 ~%3 -%4").arg(::textOf(step.cause)).arg(step.added).arg(step.changed).arg(step.removed);
    return lines;
}
/// Named by its place in the history, the newest first.
QString idOf(ABAddressBook &book, const QString &place)
{
    return place == u("unknown") ? place : book.history()->at(place.toUInt()).cause.id;
}
QStringList stepOf(ABAddressBook &book, const QString &place)
{
    const auto step = book.historyStep(idOf(book, place));
    if (!step)
        return said(step.error());
    QStringList lines;
    for (const RecordedChange &change : step->changes)
        lines += textOf(change.uid, change.before) + u(" > ")
            + (change.afterIsLost ? u("lost") : textOf(change.uid, change.after));
    return lines;
}
QStringList restored(ABAddressBook &book, const QStringList &places)
{
    QStringList ids;
    for (const QString &place : places)
        ids += idOf(book, place);
    const auto plan = planRestore(book, ids);
    return said(plan ? restore(book, *plan) : plan.error());
}
QStringList imported(ABAddressBook &book, const QString &text, OnOtherContent policy)
{
    const QByteArray content = text.toUtf8().replace('|', '\n').replace('\'', '"');
    const auto report = importFile(book, recordSource(content, formatOfContent(content)), QString(), {}, policy);
    return {u("%1 new, %2 there, %3 in all").arg(report.imported).arg(report.alreadyThere).arg(book.people().size())};
}
QStringList refreshed(ABAddressBook &book)
{
    const auto uids = book.refresh();
    QStringList texts(uids->begin(), uids->end());
    texts.sort();
    return texts;
}
/// Within a story, saves of the same cause belong together.
QStringList saved(ABAddressBook &book, const QString &text)
{
    auto &cause = causes[text];
    if (!cause && !text.isEmpty())
        cause = makeCause(kindNamed(text.section(u(": "), 0, 0)), text.section(u(": "), 1));
    Error error;
    return said(book.save(&error, cause), error);
}
QStringList listen(Program &program)
{
    program.store.setChangeListener([heard = program.heard] { ++*heard; });
    return {};
}
QStringList fail(Program &program, int call)
{
    program.store.failAtCall(program.store.callCount() + call);
    return {};
}
/// Since the step was played last.
QStringList callsOf(Program &program)
{
    const int before = std::exchange(program.calls, program.store.callCount());
    return {QString::number(program.calls - before)};
}
QStringList add(ABAddressBook &book, const QString &text)
{
    const QString uid = recordFromText(text.section(u(" + "), 0, 0).toUtf8()).uid;
    Error error;
    return said(book.addRecord(std::make_shared<ABPerson>(uid, recordIn(text)), &error), error);
}
QStringList set(ABAddressBook &book, const QString &text)
{
    Error error;
    const auto property = propertyNamed(text.section(u' ', 1, 1));
    return said(
        book.personWithUniqueId(text.section(u' ', 0, 0))->setValue(text.section(u' ', 2), *property, &error), error);
}
QStringList removed(ABAddressBook &book, const QString &uid)
{
    Error error;
    return said(book.removeRecord(book.personWithUniqueId(uid), &error), error);
}
QStringList ignoredIn(AddressBookStore &store)
{
    const auto ignored = store.ignored();
    QStringList texts;
    for (const Ignored &each : *ignored)
        texts += each.condition + u' ' + each.uids.join(u',') + u(" '") + each.found + u'\'';
    return texts;
}
/// "+" or "-" and what ignoredIn() tells of one, between semicolons.
QStringList ignore(AddressBookStore &store, const QString &text)
{
    std::vector<Ignored> added;
    QStringList removed;
    for (const QString &each : text.split(u(" ; "))) {
        const Ignored ignored{
            each.mid(1).section(u' ', 0, 0), each.section(u' ', 1, 1).split(u','), each.section(u' ', 2)};
        if (each.startsWith(u'+'))
            added.push_back(ignored);
        else
            removed += ignored.id();
    }
    return said(store.changeIgnored(added, removed));
}
QStringList peopleOf(ABAddressBook &book)
{
    QStringList texts;
    for (const auto &[person, record] : *book.snapshot())
        texts += textOf(person->uniqueId(), record);
    return texts;
}

const QMap<QString, Step> &steps()
{
    static const QMap<QString, Step> steps{
        {u("load"), [](auto &program, auto &) { return textsOf(program.store.loadAll()); }},
        {u("commit"), [](auto &program, auto &rest) { return said(program.store.commit(changesIn(rest))); }},
        {u("look"), [](auto &program, auto &) { return look(program.store); }},
        {u("listen"), [](auto &program, auto &) { return listen(program); }},
        {u("hear"), [](auto &program, auto &) { return hear(program); }},
        {u("fail"), [](auto &program, auto &rest) { return fail(program, rest.toInt()); }},
        {u("calls"), [](auto &program, auto &) { return callsOf(program); }},
        {u("ignored"), [](auto &program, auto &) { return ignoredIn(program.store); }},
        {u("ignore"), [](auto &program, auto &rest) { return ignore(program.store, rest); }},
        {u("add"), [](auto &program, auto &rest) { return add(program.book(), rest); }},
        {u("set"), [](auto &program, auto &rest) { return set(program.book(), rest); }},
        {u("remove"), [](auto &program, auto &rest) { return removed(program.book(), rest); }},
        {u("save"), [](auto &program, auto &rest) { return saved(program.book(), rest); }},
        {u("pending"),
            [](auto &program, auto &) { return QStringList(program.book().hasUnsavedChanges() ? u("yes") : u("no")); }},
        {u("people"), [](auto &program, auto &) { return peopleOf(program.book()); }},
        {u("import"),
            [](auto &program, auto &rest) { return imported(program.book(), rest, OnOtherContent::AddUnderNewUid); }},
        {u("replace"),
            [](auto &program, auto &rest) { return imported(program.book(), rest, OnOtherContent::Replace); }},
        {u("catchUp"), [](auto &program, auto &) { return said(program.book().catchUp()); }},
        {u("refresh"), [](auto &program, auto &) { return refreshed(program.book()); }},
        {u("history"), [](auto &program, auto &) { return historyOf(program.book()); }},
        {u("step"), [](auto &program, auto &rest) { return stepOf(program.book(), rest); }},
        {u("restore"), [](auto &program, auto &rest) { return restored(program.book(), rest.split(u' ')); }},
    };
    return steps;
}

} // namespace

QStringList textsOf(const Result<std::vector<StoredRecord>> &people)
{
    if (!people)
        return said(people.error());
    QStringList texts;
    for (const auto &[uid, record] : *people)
        texts += textOf(uid, record);
    return texts;
}

void addStories(std::initializer_list<const char *> kinds)
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QStringList>("story");
    for (QStringList &story : blocksOf(u("tests/data/book/stories.txt"))) {
        story.replaceInStrings(u("<BOM>"), QChar(QChar::ByteOrderMark));
        for (const char *kind : kinds) {
            if (!story[0].contains(u'(') || story[0].section(u'(', 1).contains(u(kind)))
                QTest::addRow("%s: %s", kind, qUtf8Printable(story[0])) << u(kind) << story;
        }
    }
}

void playStory(const QStringList &story, const StoreOpener &open, const BesideStep &beside, const QString &file)
{
    causes.clear();
    std::map<QString, Program> programs;
    QStringList lines{story[0]};
    for (const QString &line : story.mid(1)) {
        if (line.startsWith(u'='))
            continue;
        lines += line;
        const QString name = line.section(u' ', 0, 0);
        const QString rest = line.section(u' ', 1);
        auto answer = beside(name, rest);
        if (!answer && !programs.contains(name))
            programs.emplace(name, Program{std::make_unique<FailingStore>(open(), 0)});
        for (const QString &each :
            answer ? *answer : steps()[rest.section(u' ', 0, 0)](programs.at(name), rest.section(u' ', 1)))
            lines += u("= ") + (file.isEmpty() ? each : QString(each).replace(file, u("FILE")));
    }
    if (lines != story)
        qWarning("%s", qUtf8Printable(lines.join(u'\n')));
    QCOMPARE(lines, story);
}
