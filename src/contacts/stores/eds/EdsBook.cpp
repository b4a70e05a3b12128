// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/EdsBook.h"

#include "contacts/stores/eds/BookErrors.h"
#include "contacts/stores/eds/BookPages.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <deque>

namespace {

/// Not to wait for a server that the book is a copy of.
constexpr auto kNoWait = static_cast<guint32>(-1);
/// What others changed on a server since the daemon last looked there is not written over.
constexpr auto kWriteFlags = E_BOOK_OPERATION_FLAG_CONFLICT_FAIL;

template <typename T> class Owned
{
public:
    explicit Owned(T *object) : m_object(object) { }
    ~Owned() { g_clear_object(&m_object); }
    Owned(const Owned &) = delete;
    Owned &operator=(const Owned &) = delete;
    T *get() const { return m_object; }

private:
    T *m_object;
};

/// A list of contacts made of texts, given back at the end.
class ContactList
{
public:
    explicit ContactList(const std::vector<EdsBook::Card> &cards)
    {
        for (auto card = cards.rbegin(); card != cards.rend(); ++card)
            m_list = g_slist_prepend(
                m_list, e_contact_new_from_vcard_with_uid(card->text.constData(), card->uid.constData()));
    }
    ~ContactList() { g_slist_free_full(m_list, g_object_unref); }
    ContactList(const ContactList &) = delete;
    ContactList &operator=(const ContactList &) = delete;
    GSList *get() const { return m_list; }

private:
    GSList *m_list = nullptr;
};

ESourceRegistry *registry(void *object)
{
    return static_cast<ESourceRegistry *>(object);
}

EBookClient *client(void *object)
{
    return static_cast<EBookClient *>(object);
}

/// Not a copy of a server's book.
bool isKeptHere(ESource *source)
{
    auto *book = static_cast<ESourceBackend *>(e_source_get_extension(source, E_SOURCE_EXTENSION_ADDRESS_BOOK));
    return qstrcmp(e_source_backend_get_backend_name(book), "local") == 0;
}

EdsSource described(ESource *source, ESource *defaultBook)
{
    return {QString::fromUtf8(e_source_get_uid(source)), QString::fromUtf8(e_source_get_display_name(source)),
        defaultBook && e_source_equal(source, defaultBook)};
}

} // namespace

EdsBook::EdsBook(QByteArray sourceUid, std::shared_ptr<CallGuard> guard)
    : m_guard(std::move(guard)), m_object(m_guard), m_sourceUid(std::move(sourceUid))
{ }

EdsBook::~EdsBook()
{
    disconnect();
}

void EdsBook::disconnect()
{
    m_object.disconnect();
    for (void **object : {&m_client, &m_registry, &m_connection}) {
        if (*object)
            g_object_unref(std::exchange(*object, nullptr));
    }
}

Error EdsBook::takeError(void *taken, const char *what)
{
    auto *error = static_cast<GError *>(taken);
    const QString book = m_source.name.isEmpty() ? QStringLiteral("the desktop's address book") : m_source.name;
    if (!error)
        return {ErrorKind::Io, book + QStringLiteral(": ") + QString::fromLatin1(what) + QStringLiteral(" failed")};
    const auto refusal = refusalOf(error);
    m_hasTimedOut = isTimeout(error);
    if (m_guard->isGivenUp() && m_hasTimedOut) {
        g_error_free(error);
        disconnect();
        return givenUp();
    }
    QString reason = QString::fromUtf8(error->message).simplified();
    if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED))
        reason = QStringLiteral("no answer within %1 s").arg(double(m_guard->callLimit().count()) / 1000);
    while (reason.endsWith(u'.'))
        reason.chop(1);
    g_error_free(error);
    if (!refusal)
        disconnect();
    return {refusal.value_or(ErrorKind::Unavailable),
        QStringLiteral("%1: %2: %3").arg(book, QString::fromLatin1(what), reason)};
}

Error EdsBook::givenUp() const
{
    return {ErrorKind::Cancelled, m_source.name + QStringLiteral(": reading was given up")};
}

bool EdsBook::isOffered(CallGuard &guard)
{
    GDBusConnection *connection = g_bus_get_sync(G_BUS_TYPE_SESSION, guard.beginCall(), nullptr);
    if (!connection)
        return false;
    g_dbus_connection_set_exit_on_close(connection, FALSE);
    if (g_dbus_connection_is_closed(connection)) {
        g_object_unref(connection);
        return false;
    }
    GVariant *names = g_dbus_connection_call_sync(connection, "org.freedesktop.DBus", "/org/freedesktop/DBus",
        "org.freedesktop.DBus", "ListActivatableNames", nullptr, G_VARIANT_TYPE("(as)"), G_DBUS_CALL_FLAGS_NONE, -1,
        guard.beginCall(), nullptr);
    const bool isThere = names && !lastNameIn(names, kAddressBookBusName).isEmpty()
        && !lastNameIn(names, "org.gnome.evolution.dataserver.Sources").isEmpty();
    if (names)
        g_variant_unref(names);
    g_object_unref(connection);
    return isThere;
}

Result<void> EdsBook::ensureRegistry()
{
    if (m_registry)
        return {};
    GError *error = nullptr;
    if (!m_connection) {
        m_connection = g_bus_get_sync(G_BUS_TYPE_SESSION, m_guard->beginCall(), &error);
        if (!m_connection)
            return takeError(error, "no session bus");
        // GIO would otherwise end the program together with the bus.
        g_dbus_connection_set_exit_on_close(static_cast<GDBusConnection *>(m_connection), FALSE);
    }
    // As long as anybody in the process holds the old connection, GIO hands it out again.
    if (g_dbus_connection_is_closed(static_cast<GDBusConnection *>(m_connection))) {
        disconnect();
        return Error{ErrorKind::Unavailable, QStringLiteral("the session bus has ended")};
    }
    m_registry = e_source_registry_new_sync(m_guard->beginCall(), &error);
    if (!m_registry)
        return takeError(error, "Evolution Data Server cannot be reached");
    return {};
}

Result<std::vector<EdsSource>> EdsBook::sources()
{
    if (auto ready = ensureRegistry(); !ready)
        return ready.error();
    const Owned<ESource> standard(e_source_registry_ref_default_address_book(registry(m_registry)));
    GList *all = e_source_registry_list_enabled(registry(m_registry), E_SOURCE_EXTENSION_ADDRESS_BOOK);
    std::vector<EdsSource> books;
    for (GList *at = all; at; at = at->next)
        books.push_back(described(static_cast<ESource *>(at->data), standard.get()));
    g_list_free_full(all, g_object_unref);
    return books;
}

Result<void> EdsBook::connect()
{
    if (m_client && !g_dbus_connection_is_closed(static_cast<GDBusConnection *>(m_connection)))
        return {};
    if (m_client)
        disconnect();
    if (auto ready = ensureRegistry(); !ready)
        return ready.error();
    const Owned<ESource> source(m_sourceUid.isEmpty()
            ? e_source_registry_ref_default_address_book(registry(m_registry))
            : e_source_registry_ref_source(registry(m_registry), m_sourceUid.constData()));
    const bool isBook = source.get() && e_source_has_extension(source.get(), E_SOURCE_EXTENSION_ADDRESS_BOOK);
    if (!isBook)
        return Error{ErrorKind::NotFound,
            QStringLiteral("eds:%1: the desktop has no such address book").arg(QString::fromUtf8(m_sourceUid))};
    if (!e_source_registry_check_enabled(registry(m_registry), source.get()))
        return Error{ErrorKind::NotFound,
            QStringLiteral("eds:%1: this address book is switched off").arg(QString::fromUtf8(m_sourceUid))};
    const Owned<ESource> standard(e_source_registry_ref_default_address_book(registry(m_registry)));
    m_source = described(source.get(), standard.get());
    m_sourceUid = m_source.uid.toUtf8(); // another book may become the default one meanwhile
    GError *error = nullptr;
    m_isLocal = isKeptHere(source.get());
    // Not connect_direct, which has its price: see BookFile.
    m_client = e_book_client_connect_sync(source.get(), kNoWait, m_guard->beginCall(), &error);
    if (!m_client)
        return takeError(error, "cannot be opened");
    m_object.connect(static_cast<GDBusConnection *>(m_connection), m_sourceUid);
    return {};
}

bool EdsBook::isReadOnly() const
{
    // The daemon is asked where libebook says so, which may be late in a book that was opened just now.
    return m_client && e_client_is_readonly(E_CLIENT(m_client)) && !m_object.isWritable();
}

Result<QByteArray> EdsBook::revision()
{
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (auto ready = connect(); !ready)
            return ready.error();
        GError *error = nullptr;
        QByteArray revision = m_object.revision(&error);
        if (!error)
            return revision;
        if (isTimeout(error))
            return takeError(error, "cannot be read");
        g_error_free(error);
        // That daemon is gone; a new one may be asked.
        disconnect();
    }
    return QByteArray();
}

Result<std::vector<QByteArray>> EdsBook::uids()
{
    if (auto ready = connect(); !ready)
        return ready.error();
    GSList *list = nullptr;
    GError *error = nullptr;
    if (!e_book_client_get_contacts_uids_sync(client(m_client), "", &list, m_guard->beginCall(), &error))
        return takeError(error, "cannot be read");
    std::vector<QByteArray> uids;
    for (GSList *at = list; at; at = at->next)
        uids.emplace_back(static_cast<const char *>(at->data));
    g_slist_free_full(list, g_free);
    return uids;
}

QString EdsBook::file() const
{
    if (!m_isLocal)
        return {};
    constexpr auto builtIn = "system-address-book";
    const QString folder = m_sourceUid == builtIn ? QStringLiteral("system") : QString::fromUtf8(m_sourceUid);
    return QStringLiteral("%1/addressbook/%2/contacts.db").arg(QFile::decodeName(e_get_user_data_dir()), folder);
}

Result<std::vector<EdsBook::Card>> EdsBook::allCards()
{
    if (auto ready = connect(); !ready)
        return ready.error();
    GError *error = nullptr;
    if (m_object.isThere()) {
        const std::vector<QByteArray> texts = m_object.texts(&error);
        if (!error)
            return cardsOf(texts);
        if (isTimeout(error))
            return takeError(error, "cannot be read");
        g_clear_error(&error); // libebook knows what it means
    }
    GSList *list = nullptr;
    if (!e_book_client_get_contacts_sync(client(m_client), "", &list, m_guard->beginCall(), &error))
        return takeError(error, "cannot be read");
    return takeCards(list);
}

Result<std::vector<EdsBook::Card>> EdsBook::cards(const QByteArray *uids, std::size_t count)
{
    if (count == 0)
        return std::vector<Card>();
    if (auto ready = connect(); !ready)
        return ready.error();
    GSList *list = nullptr;
    GError *error = nullptr;
    const QByteArray query = queryFor({uids, count});
    if (!e_book_client_get_contacts_sync(client(m_client), query.constData(), &list, m_guard->beginCall(), &error))
        return takeError(error, "cannot be read");
    return takeCards(list);
}

Result<void> EdsBook::cardsByPages(std::span<const QByteArray> uids, const TakeCards &take, std::size_t &taken)
{
    taken = 0;
    if (auto ready = connect(); !ready)
        return ready.error();
    // The daemon puts one page together while another is on the bus.
    constexpr std::size_t kUnderWay = 2;
    std::deque<std::unique_ptr<PageRequest>> requests;
    std::size_t asked = 0;
    const auto ask = [&] {
        while (asked < uids.size() && requests.size() < kUnderWay) {
            const auto page = uids.subspan(asked, std::min(kPageSize, uids.size() - asked));
            requests.push_back(std::make_unique<PageRequest>(client(m_client), queryFor(page), page.size()));
            asked += page.size();
        }
    };
    Result<void> result;
    for (ask(); result && !requests.empty();) {
        const auto first = std::move(requests.front());
        requests.pop_front();
        first->wait(*m_guard);
        if (!first->list && first->error) {
            result = takeError(std::exchange(first->error, nullptr), "cannot be read");
            continue;
        }
        ask();
        std::vector<Card> cards = takeCards(std::exchange(first->list, nullptr));
        taken += first->size;
        if (!take(cards))
            result = givenUp();
    }
    for (const auto &request : requests)
        request->cancel(*m_guard);
    return result;
}

Result<void> EdsBook::outcome(bool isDone, void *error)
{
    if (isDone)
        return {};
    Error refusal = takeError(error, "cannot be changed");
    // Else the daemon would go on to compare with what its copy of the server's book said before.
    if (refusal.kind == ErrorKind::Conflict && !m_isLocal && e_client_check_refresh_supported(E_CLIENT(m_client)))
        e_client_refresh_sync(E_CLIENT(m_client), m_guard->beginCall(), nullptr);
    return refusal;
}

Result<void> EdsBook::add(const std::vector<Card> &cards)
{
    if (auto ready = connect(); !ready)
        return ready.error();
    const ContactList contacts(cards);
    GSList *uids = nullptr;
    GError *error = nullptr;
    const bool added = e_book_client_add_contacts_sync(
        client(m_client), contacts.get(), kWriteFlags, &uids, m_guard->beginCall(), &error);
    g_slist_free_full(uids, g_free);
    return outcome(added, error);
}

Result<void> EdsBook::modify(const std::vector<Card> &cards)
{
    if (auto ready = connect(); !ready)
        return ready.error();
    const ContactList contacts(cards);
    GError *error = nullptr;
    const bool modified =
        e_book_client_modify_contacts_sync(client(m_client), contacts.get(), kWriteFlags, m_guard->beginCall(), &error);
    return outcome(modified, error);
}

Result<void> EdsBook::remove(const std::vector<QByteArray> &uids)
{
    if (auto ready = connect(); !ready)
        return ready.error();
    GSList *list = nullptr;
    for (auto uid = uids.rbegin(); uid != uids.rend(); ++uid)
        list = g_slist_prepend(list, g_strdup(uid->constData()));
    GError *error = nullptr;
    const bool removed =
        e_book_client_remove_contacts_sync(client(m_client), list, kWriteFlags, m_guard->beginCall(), &error);
    g_slist_free_full(list, g_free);
    return outcome(removed, error);
}
