// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/book/ABAddressBook.h"

#include "contacts/book/PendingChanges.h"

#include <algorithm>

namespace {

struct SharedBook
{
    std::mutex mutex;
    std::shared_ptr<ABAddressBook> book;
} s_shared;

bool fail(Error *error, const Error &reason)
{
    if (error)
        *error = reason;
    return false;
}

bool refuse(Error *error, ErrorKind kind, const ABPersonPtr &person, const char *reason)
{
    return fail(error, {kind, person->uniqueId() % QStringLiteral(": ") % QLatin1StringView(reason)});
}

/// How often a save takes in what others changed; each round means that another program was faster.
constexpr int kSaveAttempts = 5;

} // namespace

ABAddressBook::ABAddressBook(std::unique_ptr<AddressBookStore> store)
    : m_store(std::move(store)), m_pending(std::make_shared<PendingChanges>())
{ }

ABAddressBook::~ABAddressBook()
{
    for (const auto &person : m_people.all())
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
    book->m_people.reserve(stored->size());
    for (auto &[uid, record] : *stored) {
        auto person = std::make_shared<ABPerson>(std::move(uid), std::move(record));
        person->m_pendingChanges = book->m_pending; // no one else knows the person yet: no lock
        book->m_people.insert(std::move(person));
    }
    for (const QString &uid : book->m_store->damagedPeople()) {
        if (const ABPersonPtr person = book->m_people.withUid(uid))
            person->m_isDamaged = true;
    }
    return book;
}

std::shared_ptr<ABAddressBook> ABAddressBook::sharedAddressBook()
{
    const std::scoped_lock lock(s_shared.mutex);
    return s_shared.book;
}

void ABAddressBook::setSharedAddressBook(std::shared_ptr<ABAddressBook> book)
{
    const std::scoped_lock lock(s_shared.mutex);
    s_shared.book = std::move(book);
}

bool ABAddressBook::isSharedReadOnly()
{
    const auto book = sharedAddressBook();
    return book && !book->canWrite();
}

QList<ABPersonPtr> ABAddressBook::people() const
{
    const std::scoped_lock lock(m_mutex);
    return {m_people.all().begin(), m_people.all().end()};
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
        everybody = m_people.all();
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
    return m_people.withUid(uid);
}

QList<ABPersonPtr> ABAddressBook::peopleWithNameKey(const QString &key)
{
    const std::scoped_lock lock(m_mutex);
    for (const auto &entry : m_pending->entries())
        m_people.noteName(*entry.person);
    return m_people.withNameKey(key);
}

bool ABAddressBook::containsRecord(const ABPersonPtr &person) const
{
    const std::scoped_lock lock(m_mutex);
    return isHere(person);
}

QList<ABPersonPtr> ABAddressBook::recordsMatchingSearchElement(const ABSearchElement &element) const
{
    QList<ABPersonPtr> matching = people();
    matching.removeIf([&element](const ABPersonPtr &person) { return !element.matches(*person->record()); });
    return matching;
}

bool ABAddressBook::addRecord(const ABPersonPtr &person, Error *error)
{
    const std::scoped_lock lock(m_mutex);
    const auto owner = person->pendingChanges();
    if (owner && owner != m_pending)
        return refuse(error, ErrorKind::Conflict, person, "belongs to another address book");
    if (!owner && person->isRemoved())
        return refuse(error, ErrorKind::NotFound, person, "was removed from the address book");
    if (isHere(person))
        return true;
    // Whose removal is not saved yet has the uid as well.
    if (!owner && (m_people.withUid(person->uniqueId()) || m_pending->entryOf(person->uniqueId())))
        return refuse(error, ErrorKind::Conflict, person, "another contact has this uid");
    m_pending->touch();
    m_people.insert(person);
    person->m_isRemoved = false;
    if (owner) {
        m_pending->noteReturn(person);
    } else {
        m_pending->noteChange(person, nullptr);
        person->setPendingChanges(m_pending);
    }
    return true;
}

bool ABAddressBook::removeRecord(const ABPersonPtr &person, Error *error)
{
    const std::scoped_lock lock(m_mutex);
    if (!isHere(person))
        return refuse(error, ErrorKind::NotFound, person, "not in the address book");
    m_pending->noteRemoval(person, person->record());
    person->m_isRemoved = true;
    m_pending->touch();
    m_people.remove(person);
    return true;
}

bool ABAddressBook::hasUnsavedChanges() const
{
    return !m_pending->isEmpty();
}

bool ABAddressBook::save(Error *error, const ChangeCausePtr &cause)
{
    m_pending->setCause(cause);
    bool saved = false;
    m_saveRunner([this, &saved, error] { saved = write(error); });
    return saved;
}

bool ABAddressBook::write(Error *error)
{
    const std::scoped_lock lock(m_storeMutex);
    std::optional<Error> refusal; // of what was taken back
    for (int attempt = 1; m_dropped.empty(); ++attempt) {
        const auto saved = commitPending();
        if (saved)
            return !refusal || fail(error, *refusal);
        if (!saved.error().uids.isEmpty() && takeBack(saved.error().uids)) {
            if (!refusal)
                refusal.emplace(saved.error()).text += QStringLiteral("; the change was taken back");
            continue;
        }
        if (saved.error().kind != ErrorKind::Conflict || attempt >= kSaveAttempts)
            return fail(error, saved.error());
        const auto takenIn = takeInOutsideChanges();
        if (!takenIn)
            return fail(error, takenIn.error());
        if (*takenIn == 0 && m_dropped.empty()) // the store does not yet know itself what it clashes with
            return fail(error, saved.error());
    }
    const QString uid = std::exchange(m_dropped, {}).front();
    return fail(error,
        {ErrorKind::Conflict,
            uid % QStringLiteral(": has since been changed or removed by another program; left as it is there")});
}

Result<void> ABAddressBook::commitPending()
{
    const auto entries = m_pending->entries();
    const auto changes = PendingChanges::changesIn(entries);
    if (auto committed = changes.empty() ? Result<void>() : m_store->commit(changes); !committed)
        return committed;
    tellCauses(changes);
    const std::scoped_lock lock(m_mutex);
    for (const auto &entry : entries) {
        entry.person->settle(entry.now);
        m_people.noteName(*entry.person);
        if (!entry.now)
            entry.person->setPendingChanges(nullptr);
    }
    return {};
}

bool ABAddressBook::takeBack(const QStringList &uids)
{
    const auto entries = m_pending->entriesWithCausesOf(uids);
    const std::scoped_lock lock(m_mutex);
    m_pending->touch();
    for (const auto &entry : entries)
        settle(entry.person, entry.before);
    m_people.takeOutRemoved();
    return !entries.empty();
}

void ABAddressBook::tellCauses(const std::vector<RecordChange> &changes) const
{
    for (ChangeCausePtr last; const RecordChange &change : changes) {
        if (m_causeListener && change.cause && change.cause != last)
            m_causeListener(change.cause);
        last = change.cause;
    }
}

void ABAddressBook::setCauseListener(std::function<void(const ChangeCausePtr &)> listener)
{
    const std::scoped_lock lock(m_storeMutex);
    m_causeListener = std::move(listener);
}

Result<std::vector<QString>> ABAddressBook::refresh()
{
    const std::scoped_lock lock(m_storeMutex);
    if (const auto takenIn = takeInOutsideChanges(); !takenIn)
        return takenIn.error();
    const auto uids = std::exchange(m_untold, {});
    return std::vector<QString>(uids.begin(), uids.end());
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
    m_untold.insert(uids.begin(), uids.end());
    return uids.size();
}

std::vector<QString> ABAddressBook::takeIn(const std::vector<StoredRecord> &changes)
{
    const std::scoped_lock lock(m_mutex);
    std::vector<QString> uids;
    for (const StoredRecord &change : changes) {
        if (takeIn(change))
            uids.push_back(change.uid);
    }
    if (!uids.empty()) {
        m_pending->touch();
        m_people.takeOutRemoved();
    }
    return uids;
}

bool ABAddressBook::takeIn(const StoredRecord &change)
{
    const auto &[uid, now] = change;
    const auto pending = m_pending->entryOf(uid);
    ABPersonPtr person = pending ? pending->person : m_people.withUid(uid);
    if (!person) {
        if (!now)
            return false;
        person = std::make_shared<ABPerson>(uid, now);
        person->setPendingChanges(m_pending);
        m_people.insert(person);
        return true;
    }
    person->m_isDamaged = false; // it was written since
    const PersonRecordPtr known = pending ? pending->before : person->record();
    if (now && known && *now == *known)
        return false; // an echo of what was saved or read here

    const bool clashes = pending && pending->clashesWith(now);
    if (clashes)
        m_dropped.push_back(uid);
    if (pending && !clashes && now) {
        person->rebase(known, now);
        m_people.noteName(*person);
        return true;
    }
    settle(person, now);
    return true;
}

void ABAddressBook::settle(const ABPersonPtr &person, const PersonRecordPtr &stored)
{
    if (!stored) {
        m_pending->settle(person.get(), nullptr, false);
        person->setPendingChanges(nullptr);
        person->m_isRemoved = true;
        return;
    }
    if (person->isRemoved()) {
        m_pending->noteReturn(person);
        person->m_isRemoved = false;
        m_people.insert(person);
    }
    person->setStoredRecord(stored);
    m_people.noteName(*person);
}

Result<void> ABAddressBook::apply(std::vector<RecordChange> changes, const ChangeCausePtr &cause)
{
    const std::scoped_lock lock(m_storeMutex);
    for (const auto &entry : m_pending->entries()) {
        const QString &uid = entry.person->uniqueId();
        if (std::ranges::find(changes, uid, &RecordChange::uid) != changes.end())
            return Error{
                ErrorKind::Conflict, uid % QStringLiteral(": has changes that are not saved yet; nothing was changed")};
    }
    if (changes.empty())
        return {};
    for (RecordChange &change : changes)
        change.cause = cause;
    if (auto committed = m_store->commit(changes); !committed)
        return committed;
    tellCauses(changes);
    std::vector<StoredRecord> now;
    now.reserve(changes.size());
    for (RecordChange &change : changes)
        now.push_back({std::move(change.uid), std::move(change.after)});
    changes = {}; // may be a million, and the people need memory
    takeIn(now);
    return {};
}

Error noAddressBook()
{
    return {ErrorKind::Unavailable, QStringLiteral("no address book is open")};
}
