// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/ABAddressBook.h"

#include "contacts/book/PendingChanges.h"

#include <algorithm>
#include <unordered_set>

namespace {

struct SharedBook
{
    std::mutex mutex;
    std::shared_ptr<ABAddressBook> book;
};

SharedBook &sharedBook()
{
    static SharedBook shared;
    return shared;
}

bool fail(Error *error, ErrorKind kind, const QString &text)
{
    if (error)
        *error = {kind, text};
    return false;
}

/// How often a save takes in what others changed before it gives up; each round means that somebody saved in between.
constexpr int kSaveAttempts = 5;

} // namespace

ABAddressBook::ABAddressBook(std::unique_ptr<AddressBookStore> store)
    : m_store(std::move(store)), m_pending(std::make_shared<PendingChanges>())
{ }

ABAddressBook::~ABAddressBook()
{
    for (const auto &person : m_people)
        person->setPendingChanges(nullptr);
    // People with unsaved changes and the list of them hold each other.
    for (const auto &entry : m_pending->entries()) {
        entry.person->setPendingChanges(nullptr);
        m_pending->settle(entry.person.get(), nullptr, false);
    }
}

void ABAddressBook::close()
{
    const std::scoped_lock lock(m_storeMutex);
    m_store.reset();
}

Result<std::shared_ptr<ABAddressBook>> ABAddressBook::open(std::unique_ptr<AddressBookStore> store)
{
    const std::shared_ptr<ABAddressBook> book(new ABAddressBook(std::move(store)));
    auto stored = book->m_store->loadAll();
    if (!stored)
        return stored.error();
    auto snapshot = std::make_shared<std::vector<PersonSnapshot>>();
    snapshot->reserve(stored->size());
    book->m_people.reserve(stored->size());
    for (auto &[uid, record] : *stored) {
        auto person = std::make_shared<ABPerson>(std::move(uid), record);
        person->m_pendingChanges = book->m_pending; // nobody else knows the person yet: no lock
        person->m_order = ++book->m_lastOrder;
        book->m_people.push_back(person);
        snapshot->push_back({std::move(person), std::move(record)});
    }
    book->m_snapshot = std::move(snapshot);
    return book;
}

std::shared_ptr<ABAddressBook> ABAddressBook::sharedAddressBook()
{
    const std::scoped_lock lock(sharedBook().mutex);
    return sharedBook().book;
}

void ABAddressBook::setSharedAddressBook(std::shared_ptr<ABAddressBook> book)
{
    const std::scoped_lock lock(sharedBook().mutex);
    sharedBook().book = std::move(book);
}

bool ABAddressBook::isSharedReadOnly()
{
    const auto book = sharedAddressBook();
    return book && !book->canWrite();
}

QList<ABPersonPtr> ABAddressBook::people() const
{
    const std::scoped_lock lock(m_mutex);
    return {m_people.begin(), m_people.end()};
}

PeopleSnapshot ABAddressBook::snapshot() const
{
    std::vector<ABPersonPtr> everybody;
    // Asked for before anybody is looked at: a change that comes in between makes the snapshot look old, not new.
    const quint64 version = m_pending->version();
    {
        const std::scoped_lock lock(m_mutex);
        if (m_snapshot && m_snapshotVersion == version)
            return m_snapshot;
        everybody = m_people;
    }
    auto people = std::make_shared<std::vector<PersonSnapshot>>();
    people->reserve(everybody.size());
    for (ABPersonPtr &person : everybody) {
        PersonRecordPtr record = person->record();
        people->push_back({std::move(person), std::move(record)});
    }
    const std::scoped_lock lock(m_mutex);
    m_snapshot = std::move(people);
    m_snapshotVersion = version;
    return m_snapshot;
}

ABPersonPtr ABAddressBook::personWithUniqueId(const QString &uid) const
{
    const std::scoped_lock lock(m_mutex);
    const auto &index = uidIndex();
    const auto found = index.find(uid);
    return found == index.end() ? nullptr : found->second;
}

bool ABAddressBook::containsRecord(const ABPersonPtr &person) const
{
    const std::scoped_lock lock(m_mutex);
    if (person->pendingChanges() != m_pending)
        return false;
    const auto pending = m_pending->entryOf(person);
    return !(pending && pending->removed);
}

QList<ABPersonPtr> ABAddressBook::recordsMatchingSearchElement(const ABSearchElement &element) const
{
    QList<ABPersonPtr> matching;
    const QList<ABPersonPtr> everybody = people();
    for (const auto &person : everybody) {
        if (element.matches(*person->record()))
            matching.push_back(person);
    }
    return matching;
}

bool ABAddressBook::addRecord(const ABPersonPtr &person, Error *error)
{
    const std::scoped_lock lock(m_mutex);
    const auto owner = person->pendingChanges();
    if (owner && owner != m_pending)
        return fail(
            error, ErrorKind::Conflict, person->uniqueId() % QStringLiteral(": belongs to another address book"));
    if (!owner && person->isRemoved())
        return fail(
            error, ErrorKind::NotFound, person->uniqueId() % QStringLiteral(": was removed from the address book"));
    const auto pending = m_pending->entryOf(person);
    if (owner && !(pending && pending->removed))
        return true;
    const auto removed = m_removedPeople.find(person->uniqueId());
    const bool uidIsTaken =
        removed == m_removedPeople.end() ? uidIndex().contains(person->uniqueId()) : removed->second != person;
    if (uidIsTaken)
        return fail(error, ErrorKind::Conflict, person->uniqueId() % QStringLiteral(": another contact has this uid"));
    m_removedPeople.erase(person->uniqueId());
    insert(person);
    person->m_isRemoved = false;
    if (pending) {
        m_pending->noteReturn(person);
    } else {
        m_pending->noteAddition(person);
        person->setPendingChanges(m_pending);
    }
    return true;
}

bool ABAddressBook::removeRecord(const ABPersonPtr &person, Error *error)
{
    const std::scoped_lock lock(m_mutex);
    if (person->pendingChanges() != m_pending || std::ranges::find(m_people, person) == m_people.end())
        return fail(error, ErrorKind::NotFound, person->uniqueId() % QStringLiteral(": not in the address book"));
    m_pending->noteRemoval(person, person->record());
    m_removedPeople.emplace(person->uniqueId(), person);
    person->m_isRemoved = true;
    m_pending->touch();
    std::erase(m_people, person);
    if (m_uidIndex)
        m_uidIndex->erase(person->uniqueId());
    return true;
}

bool ABAddressBook::hasUnsavedChanges() const
{
    return !m_pending->isEmpty();
}

bool ABAddressBook::save(Error *error, const ChangeCausePtr &cause)
{
    m_pending->setCause(cause);
    if (!m_saveRunner)
        return write(error);
    bool saved = false;
    m_saveRunner([this, &saved, error] { saved = write(error); });
    return saved;
}

bool ABAddressBook::write(Error *error)
{
    const std::scoped_lock lock(m_storeMutex);
    const auto failForDropped = [this, error] {
        const QString uid = std::exchange(m_dropped, {}).front();
        return fail(error, ErrorKind::Conflict,
            uid % QStringLiteral(": changed or removed by another program meanwhile; left as it is there"));
    };
    if (!m_dropped.empty())
        return failForDropped();
    Result<void> saved = commitPending();
    for (int attempt = 1; !saved && saved.error().kind == ErrorKind::Conflict && attempt < kSaveAttempts; ++attempt) {
        const auto takenIn = takeInOutsideChanges();
        if (!takenIn)
            return fail(error, takenIn.error().kind, takenIn.error().text);
        if (!m_dropped.empty())
            return failForDropped();
        if (*takenIn == 0)
            break; // the store does not yet know itself what it clashes with
        saved = commitPending();
    }
    return saved || fail(error, saved.error().kind, saved.error().text);
}

Result<void> ABAddressBook::commitPending()
{
    const auto entries = m_pending->entries();
    std::vector<RecordChange> changes;
    changes.reserve(entries.size());
    std::vector<PersonRecordPtr> written;
    written.reserve(entries.size());
    for (const auto &entry : entries) {
        const PersonRecordPtr after = entry.removed ? nullptr : entry.person->record();
        written.push_back(after);
        const bool same = entry.before && after ? *entry.before == *after : entry.before == after;
        if (!same)
            changes.push_back({entry.person->uniqueId(), entry.before, after, entry.cause});
    }
    if (!changes.empty()) {
        if (auto committed = m_store->commit(changes); !committed)
            return committed;
    }
    for (std::size_t i = 0; i < entries.size(); ++i) {
        entries[i].person->settle(written[i]);
        if (!written[i])
            forgetRemoved(entries[i].person);
    }
    return {};
}

void ABAddressBook::forgetRemoved(const ABPersonPtr &person)
{
    const std::scoped_lock lock(m_mutex);
    m_removedPeople.erase(person->uniqueId());
    person->setPendingChanges(nullptr);
}

Result<std::vector<QString>> ABAddressBook::refresh()
{
    const std::scoped_lock lock(m_storeMutex);
    if (const auto takenIn = takeInOutsideChanges(); !takenIn)
        return takenIn.error();
    return std::exchange(m_untold, {});
}

Result<void> ABAddressBook::catchUp()
{
    const std::scoped_lock lock(m_storeMutex);
    const auto takenIn = takeInOutsideChanges();
    return takenIn ? Result<void>() : takenIn.error();
}

void ABAddressBook::setChangeListener(std::function<void()> listener)
{
    if (!listener)
        m_store->giveUpLooking();
    const std::scoped_lock storeLock(m_storeMutex);
    m_store->setChangeListener(std::move(listener));
}

Result<std::size_t> ABAddressBook::takeInOutsideChanges()
{
    const auto outside = m_store->takeChangesFromOutside();
    if (!outside)
        return outside.error();
    const std::vector<QString> uids = takeIn(*outside);
    const std::unordered_set<QString> told(m_untold.begin(), m_untold.end());
    std::ranges::copy_if(
        uids, std::back_inserter(m_untold), [&told](const QString &uid) { return !told.contains(uid); });
    return uids.size();
}

std::vector<QString> ABAddressBook::takeIn(const std::vector<OutsideChange> &changes)
{
    const std::scoped_lock lock(m_mutex);
    std::vector<QString> uids;
    bool wasRemoved = false;
    for (const OutsideChange &change : changes) {
        if (!takeIn(change))
            continue;
        uids.push_back(change.uid);
        wasRemoved = wasRemoved || !change.now;
    }
    if (wasRemoved)
        takeOutRemoved();
    return uids;
}

bool ABAddressBook::takeIn(const OutsideChange &change)
{
    const auto &[uid, now] = change;
    const auto removed = m_removedPeople.find(uid);
    const auto found = uidIndex().find(uid);
    if (removed == m_removedPeople.end() && found == uidIndex().end()) {
        if (!now)
            return false;
        const auto person = std::make_shared<ABPerson>(uid, now);
        person->setPendingChanges(m_pending);
        insert(person);
        return true;
    }
    const ABPersonPtr person = removed != m_removedPeople.end() ? removed->second : found->second;
    const auto pending = m_pending->entryOf(person);
    const PersonRecordPtr known = pending ? pending->before : person->record();
    if (now && known && *now == *known)
        return false; // an echo of what was saved or read here

    const bool removedHere = pending && pending->removed;
    const bool clashes =
        pending && (removedHere ? now != nullptr : !(now && known) || changesClash(*known, *person->record(), *now));
    if (clashes)
        m_dropped.push_back(uid);
    if (pending && !clashes && now) {
        person->rebase(known, now);
        return true;
    }
    settle(person, now);
    return true;
}

void ABAddressBook::settle(const ABPersonPtr &person, const PersonRecordPtr &stored)
{
    const bool wasRemoved = m_removedPeople.erase(person->uniqueId()) > 0;
    if (!stored) {
        m_pending->settle(person.get(), nullptr, false);
        uidIndex().erase(person->uniqueId());
        person->setPendingChanges(nullptr);
        person->m_isRemoved = true;
        return;
    }
    if (wasRemoved) {
        m_pending->noteReturn(person);
        person->m_isRemoved = false;
        insert(person);
    }
    person->setStoredRecord(stored);
}

void ABAddressBook::takeOutRemoved()
{
    m_pending->touch();
    std::erase_if(m_people, [](const ABPersonPtr &person) { return person->isRemoved(); });
}

Result<std::vector<ChangeSummary>> ABAddressBook::history()
{
    const std::scoped_lock lock(m_storeMutex);
    return m_store->history();
}

Result<ChangeStep> ABAddressBook::historyStep(const QString &causeId)
{
    const std::scoped_lock lock(m_storeMutex);
    return m_store->historyStep(causeId);
}

Result<void> ABAddressBook::apply(std::vector<RecordChange> changes, const ChangeCausePtr &cause)
{
    const std::scoped_lock lock(m_storeMutex);
    for (const auto &entry : m_pending->entries()) {
        const QString &uid = entry.person->uniqueId();
        if (std::ranges::find(changes, uid, &RecordChange::uid) != changes.end())
            return Error{ErrorKind::Conflict,
                uid % QStringLiteral(": has changes that are not saved yet; nothing was restored")};
    }
    if (changes.empty())
        return {};
    for (RecordChange &change : changes)
        change.cause = cause;
    if (auto committed = m_store->commit(changes); !committed)
        return committed;
    std::vector<OutsideChange> now;
    now.reserve(changes.size());
    for (const RecordChange &change : changes)
        now.push_back({change.uid, change.after});
    takeIn(now);
    return {};
}

void ABAddressBook::insert(const ABPersonPtr &person)
{
    if (m_uidIndex)
        m_uidIndex->emplace(person->uniqueId(), person);
    m_pending->touch();
    if (person->m_order == 0)
        person->m_order = ++m_lastOrder;
    const auto order = [](const ABPersonPtr &somebody) { return somebody->m_order; };
    m_people.insert(std::ranges::upper_bound(m_people, person->m_order, {}, order), person);
}

std::unordered_map<QString, ABPersonPtr> &ABAddressBook::uidIndex() const
{
    if (!m_uidIndex) {
        m_uidIndex.emplace().reserve(m_people.size());
        for (const ABPersonPtr &person : m_people)
            m_uidIndex->emplace(person->uniqueId(), person);
    }
    return *m_uidIndex;
}
