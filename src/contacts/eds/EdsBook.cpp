// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/eds/EdsBook.h"

#include "contacts/eds/BookPages.h"

#include <algorithm>
#include <array>
#include <deque>
#include <ranges>

namespace {

/// Not to wait for a server that the book is a copy of.
constexpr auto kNoWait = static_cast<guint32>(-1);
constexpr const char *kBusNamePrefix = "org.gnome.evolution.dataserver.AddressBook";

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
        for (const auto &card : std::views::reverse(cards))
            m_list =
                g_slist_prepend(m_list, e_contact_new_from_vcard_with_uid(card.text.constData(), card.uid.constData()));
    }
    ~ContactList() { g_slist_free_full(m_list, g_object_unref); }
    ContactList(const ContactList &) = delete;
    ContactList &operator=(const ContactList &) = delete;
    GSList *get() const { return m_list; }

private:
    GSList *m_list = nullptr;
};

struct KindRow
{
    GQuark (*domain)();
    int code;
    ErrorKind kind;
};

/// What is not here counts as Unavailable, and its outcome as unknown.
std::optional<ErrorKind> refusalOf(const GError *error)
{
    static const std::array rows{
        KindRow{e_client_error_quark, E_CLIENT_ERROR_PERMISSION_DENIED, ErrorKind::ReadOnly},
        KindRow{e_client_error_quark, E_CLIENT_ERROR_NOT_SUPPORTED, ErrorKind::ReadOnly},
        KindRow{e_client_error_quark, E_CLIENT_ERROR_OUT_OF_SYNC, ErrorKind::Conflict},
        KindRow{e_client_error_quark, E_CLIENT_ERROR_INVALID_ARG, ErrorKind::Invalid},
        KindRow{e_client_error_quark, E_CLIENT_ERROR_INVALID_QUERY, ErrorKind::Invalid},
        KindRow{e_book_client_error_quark, E_BOOK_CLIENT_ERROR_CONTACT_NOT_FOUND, ErrorKind::Conflict},
        KindRow{e_book_client_error_quark, E_BOOK_CLIENT_ERROR_CONTACT_ID_ALREADY_EXISTS, ErrorKind::Conflict},
        KindRow{e_book_client_error_quark, E_BOOK_CLIENT_ERROR_NO_SUCH_BOOK, ErrorKind::NotFound},
        KindRow{e_book_client_error_quark, E_BOOK_CLIENT_ERROR_NO_SUCH_SOURCE, ErrorKind::NotFound},
        KindRow{e_book_client_error_quark, E_BOOK_CLIENT_ERROR_NO_SPACE, ErrorKind::Io},
    };
    const auto *row = std::ranges::find_if(
        rows, [error](const KindRow &known) { return g_error_matches(error, known.domain(), known.code); });
    if (row != rows.end())
        return row->kind;
    // The local book's own errors have a domain that no header declares; 2 says that there is no such card.
    if (qstrcmp(g_quark_to_string(error->domain), "e-book-backend-sqlite-error-quark") == 0)
        return error->code == 2 ? ErrorKind::Conflict : ErrorKind::Io;
    return std::nullopt;
}

/// The name in an "(as)" that begins with @p prefix; empty where there is none.
QByteArray lastNameIn(GVariant *names, const char *prefix)
{
    QByteArray found;
    GVariantIter *iterator = nullptr;
    g_variant_get(names, "(as)", &iterator);
    for (const char *name = nullptr; g_variant_iter_next(iterator, "&s", &name);) {
        if (g_str_has_prefix(name, prefix))
            found = name;
    }
    g_variant_iter_free(iterator);
    return found;
}

ESourceRegistry *registry(void *object)
{
    return static_cast<ESourceRegistry *>(object);
}

EBookClient *client(void *object)
{
    return static_cast<EBookClient *>(object);
}

EdsSource described(ESource *source, ESource *defaultBook)
{
    return {QString::fromUtf8(e_source_get_uid(source)), QString::fromUtf8(e_source_get_display_name(source)),
        defaultBook && e_source_equal(source, defaultBook)};
}

} // namespace

EdsBook::EdsBook(QByteArray sourceUid, std::shared_ptr<CallGuard> guard)
    : m_guard(std::move(guard)), m_sourceUid(std::move(sourceUid))
{ }

EdsBook::~EdsBook()
{
    disconnect();
}

void EdsBook::disconnect()
{
    unsubscribe();
    for (void **object : {&m_client, &m_registry, &m_connection}) {
        if (*object)
            g_object_unref(std::exchange(*object, nullptr));
    }
    m_revisionPath.clear();
}

Error EdsBook::takeError(void *taken, const char *what)
{
    auto *error = static_cast<GError *>(taken);
    const QString book = m_source.name.isEmpty() ? QStringLiteral("the desktop's address book") : m_source.name;
    if (!error)
        return {ErrorKind::Io, book + QStringLiteral(": ") + QString::fromLatin1(what) + QStringLiteral(" failed")};
    const auto refusal = refusalOf(error);
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
    const bool isThere = names && !lastNameIn(names, kBusNamePrefix).isEmpty()
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
    m_client = e_book_client_connect_sync(source.get(), kNoWait, m_guard->beginCall(), &error);
    if (!m_client)
        return takeError(error, "cannot be opened");
    m_isReadOnly = e_client_is_readonly(E_CLIENT(m_client)) != FALSE;
    findRevisionObject();
    return {};
}

/// libebook keeps the revision up to date by signals, which may come late. The daemon's own object never is; where it
/// cannot be had, there is no revision.
void EdsBook::findRevisionObject()
{
    auto *connection = static_cast<GDBusConnection *>(m_connection);
    GVariant *names =
        g_dbus_connection_call_sync(connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
            "ListNames", nullptr, G_VARIANT_TYPE("(as)"), G_DBUS_CALL_FLAGS_NONE, -1, m_guard->beginCall(), nullptr);
    if (!names)
        return;
    const QByteArray factory = lastNameIn(names, kBusNamePrefix);
    g_variant_unref(names);
    if (factory.isEmpty())
        return;
    GVariant *opened = g_dbus_connection_call_sync(connection, factory.constData(),
        "/org/gnome/evolution/dataserver/AddressBookFactory", "org.gnome.evolution.dataserver.AddressBookFactory",
        "OpenAddressBook", g_variant_new("(s)", m_source.uid.toUtf8().constData()), G_VARIANT_TYPE("(ss)"),
        G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, m_guard->beginCall(), nullptr);
    if (!opened)
        return;
    const char *path = nullptr;
    const char *name = nullptr;
    g_variant_get(opened, "(&s&s)", &path, &name);
    m_revisionPath = path;
    m_revisionName = name;
    g_variant_unref(opened);
    subscribe();
}

void EdsBook::setChangeListener(std::function<void()> listener)
{
    unsubscribe();
    m_changed = std::move(listener);
    subscribe();
}

void EdsBook::subscribe()
{
    if (!m_changed || m_revisionPath.isEmpty())
        return;
    const auto call = [](GDBusConnection *, const char *, const char *, const char *, const char *, GVariant *,
                          gpointer listener) { (*static_cast<std::function<void()> *>(listener))(); };
    const auto forget = [](gpointer listener) { delete static_cast<std::function<void()> *>(listener); };
    m_subscription = g_dbus_connection_signal_subscribe(static_cast<GDBusConnection *>(m_connection),
        m_revisionName.constData(), "org.freedesktop.DBus.Properties", "PropertiesChanged", m_revisionPath.constData(),
        "org.gnome.evolution.dataserver.AddressBook", G_DBUS_SIGNAL_FLAGS_NONE, call,
        new std::function<void()>(m_changed), forget);
}

void EdsBook::unsubscribe()
{
    if (m_subscription != 0)
        g_dbus_connection_signal_unsubscribe(
            static_cast<GDBusConnection *>(m_connection), std::exchange(m_subscription, 0U));
}

QByteArray EdsBook::revision()
{
    if (!connect() || m_revisionPath.isEmpty())
        return {};
    GVariant *answer = g_dbus_connection_call_sync(static_cast<GDBusConnection *>(m_connection),
        m_revisionName.constData(), m_revisionPath.constData(), "org.freedesktop.DBus.Properties", "Get",
        g_variant_new("(ss)", "org.gnome.evolution.dataserver.AddressBook", "Revision"), G_VARIANT_TYPE("(v)"),
        G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, m_guard->beginCall(), nullptr);
    if (!answer)
        return {};
    GVariant *value = nullptr;
    g_variant_get(answer, "(v)", &value);
    QByteArray text(g_variant_is_of_type(value, G_VARIANT_TYPE_STRING) ? g_variant_get_string(value, nullptr) : "");
    g_variant_unref(value);
    g_variant_unref(answer);
    return text;
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
    Result<void> result;
    while (result && (asked < uids.size() || !requests.empty())) {
        while (asked < uids.size() && requests.size() < kUnderWay) {
            const auto page = uids.subspan(asked, std::min(kPageSize, uids.size() - asked));
            requests.push_back(std::make_unique<PageRequest>(client(m_client), queryFor(page), page.size()));
            asked += page.size();
        }
        PageRequest &first = *requests.front();
        first.wait(*m_guard);
        if (!first.list && first.error) {
            result = takeError(std::exchange(first.error, nullptr), "cannot be read");
            requests.pop_front();
            continue;
        }
        std::vector<Card> cards = takeCards(std::exchange(first.list, nullptr));
        taken += first.size;
        requests.pop_front();
        if (!take(cards))
            result = Error{ErrorKind::Cancelled, m_source.name + QStringLiteral(": reading was given up")};
    }
    for (const auto &request : requests)
        request->cancel(*m_guard);
    return result;
}

Result<void> EdsBook::add(const std::vector<Card> &cards)
{
    if (auto ready = connect(); !ready)
        return ready.error();
    const ContactList contacts(cards);
    GSList *uids = nullptr;
    GError *error = nullptr;
    if (!e_book_client_add_contacts_sync(
            client(m_client), contacts.get(), E_BOOK_OPERATION_FLAG_NONE, &uids, m_guard->beginCall(), &error))
        return takeError(error, "cannot be changed");
    g_slist_free_full(uids, g_free);
    return {};
}

Result<void> EdsBook::modify(const std::vector<Card> &cards)
{
    if (auto ready = connect(); !ready)
        return ready.error();
    const ContactList contacts(cards);
    GError *error = nullptr;
    if (!e_book_client_modify_contacts_sync(
            client(m_client), contacts.get(), E_BOOK_OPERATION_FLAG_NONE, m_guard->beginCall(), &error))
        return takeError(error, "cannot be changed");
    return {};
}

Result<void> EdsBook::remove(const std::vector<QByteArray> &uids)
{
    if (auto ready = connect(); !ready)
        return ready.error();
    GSList *list = nullptr;
    for (const auto &uid : std::views::reverse(uids))
        list = g_slist_prepend(list, g_strdup(uid.constData()));
    GError *error = nullptr;
    const gboolean removed = e_book_client_remove_contacts_sync(
        client(m_client), list, E_BOOK_OPERATION_FLAG_NONE, m_guard->beginCall(), &error);
    g_slist_free_full(list, g_free);
    if (!removed)
        return takeError(error, "cannot be changed");
    return {};
}
