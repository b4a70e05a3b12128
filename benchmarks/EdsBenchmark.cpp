// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "GeneratedBook.h"
#include "contacts/stores/eds/EdsStore.h"
#include "support/PrivateDesktop.h"

#include <benchmark/benchmark.h>
#include <libebook/libebook.h>

#include <map>

// Loading a book of the desktop, compared with listing it by libebook alone, both from the same daemon.

namespace {

PrivateDesktop &desktop()
{
    static PrivateDesktop running(4);
    return running;
}

/// A book with the generator's first @p count people; an empty name where there is no daemon.
QString filledBook(qint64 count)
{
    static std::map<qint64, QString> books;
    if (!desktop().problem().isEmpty())
        return {};
    QString &book = books[count];
    if (!book.isEmpty())
        return book;
    book = QStringLiteral("book%1").arg(books.size() - 1);
    std::vector<RecordChange> changes;
    for (const auto &[uid, record] : generatedPeople(count))
        changes.push_back({uid, nullptr, record});
    const auto store = EdsStore::open({book, desktop().dataFolder()});
    if (const auto saved = (*store)->commit(changes); !saved)
        qFatal("%s", qPrintable(saved.error().text));
    return book;
}

void bareListing(benchmark::State &state)
{
    const QString book = filledBook(state.range(0));
    if (book.isEmpty()) {
        state.SkipWithError(desktop().problem().toUtf8().constData());
        return;
    }
    ESourceRegistry *registry = e_source_registry_new_sync(nullptr, nullptr);
    ESource *source = e_source_registry_ref_source(registry, book.toUtf8().constData());
    EClient *client = e_book_client_connect_sync(source, static_cast<guint32>(-1), nullptr, nullptr);
    for (auto _ : state) {
        GSList *contacts = nullptr;
        e_book_client_get_contacts_sync(E_BOOK_CLIENT(client), "", &contacts, nullptr, nullptr);
        if (g_slist_length(contacts) != static_cast<guint>(state.range(0)))
            state.SkipWithError("not everybody came");
        state.PauseTiming();
        g_slist_free_full(contacts, g_object_unref);
        state.ResumeTiming();
    }
    g_object_unref(client);
    g_object_unref(source);
    g_object_unref(registry);
}

void load(benchmark::State &state)
{
    const QString book = filledBook(state.range(0));
    if (book.isEmpty()) {
        state.SkipWithError(desktop().problem().toUtf8().constData());
        return;
    }
    const auto store = EdsStore::open({book, desktop().dataFolder()});
    for (auto _ : state) {
        auto people = (*store)->loadAll();
        if (!people || people->size() != static_cast<std::size_t>(state.range(0)))
            state.SkipWithError("not everybody came");
        state.PauseTiming();
        people = std::vector<StoredRecord>(); // a program keeps them
        state.ResumeTiming();
    }
}

/// One person changed and saved in a book of many, then a look for changes from outside.
void saveOne(benchmark::State &state)
{
    const QString book = filledBook(state.range(0));
    if (book.isEmpty()) {
        state.SkipWithError(desktop().problem().toUtf8().constData());
        return;
    }
    const auto store = EdsStore::open({book, desktop().dataFolder()});
    const auto people = (*store)->loadAll();
    StoredRecord person = people->front();
    int round = 0;
    for (auto _ : state) {
        auto after = std::make_shared<PersonRecord>(*person.record);
        after->setText(kABNoteProperty, QString::number(++round));
        if (!(*store)->commit({{person.uid, person.record, after}}) || !(*store)->takeChangesFromOutside())
            state.SkipWithError("not saved");
        person.record = after;
    }
}

} // namespace

BENCHMARK(bareListing)->Arg(10'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(load)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(saveOne)->Arg(10'000)->Unit(benchmark::kMillisecond)->UseRealTime();
