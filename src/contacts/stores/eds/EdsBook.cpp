// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/EdsBook.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

namespace {

/// The daemon's parser of queries refuses 1000 uids.
constexpr std::size_t kPageSize = 500;
/// The daemon writes the cards of a server's book one by one, and continues after the caller has stopped waiting.
constexpr std::size_t kCardsToServer = 5;
/// As many halvings make a page of kPageSize a single card, which is then asked for once more.
constexpr int kMostFailures = 10;
/// Not to wait for the server of which the book is a copy.
constexpr auto kNoWait = static_cast<guint32>(-1);
/// What others changed on a server since the daemon last looked there is not overwritten.
constexpr auto kWriteFlags = E_BOOK_OPERATION_FLAG_CONFLICT_FAIL;

QByteArray queryFor(std::span<const QByteArray> uids)
{
    QByteArray query = "(or";
    for (QByteArray uid : uids)
        query += R"( (is "id" ")" + uid.replace('\\', "\\\\").replace('"', "\\\"") + "\")";
    return query + ')';
}

/// The uid of a contact with this text. libebook parses the whole card to tell it, which costs more than the card's
/// way over the bus, so it is asked only where the line is folded, escaped or has blanks that libebook drops.
QByteArray uidOf(EContact *contact, std::string_view text)
{
    constexpr std::string_view head = "\nUID:";
    const std::size_t begin = text.find(head) + head.size();
    const std::size_t end = text.find_first_of("\r\n \t\\", begin);
    const bool isPlain = begin >= head.size() && end != std::string_view::npos && end > begin
        && text.substr(end).starts_with("\r\n") && text.find_first_of(" \t", end) != end + 2;
    if (isPlain)
        return {text.data() + begin, qsizetype(end - begin)};
    return static_cast<const char *>(e_contact_get_const(contact, E_CONTACT_UID));
}

EdsBookInfo described(ESource *source, ESource *defaultBook)
{
    return {QString::fromUtf8(e_source_get_uid(source)), QString::fromUtf8(e_source_get_display_name(source)),
        defaultBook && e_source_equal(source, defaultBook)};
}

struct KindRow
{
    GQuark (*domain)();
    int code;
    ErrorKind kind;
};

/// What the daemon refused; nothing if it cannot be reached, so that the outcome of the call is unknown.
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

/// Whether the call timed out and may still be in progress.
bool isTimeout(const GError *error)
{
    return g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED)
        || g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT)
        || g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_TIMEOUT)
        || g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_TIMED_OUT);
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
    if (m_client)
        g_signal_handlers_disconnect_by_data(m_client, this);
    g_clear_object(&m_client);
    g_clear_object(&m_registry);
    g_clear_object(&m_connection);
}

Error EdsBook::failure(const GError *error, const char *what)
{
    const QString book = m_info.name.isEmpty() ? QStringLiteral("the desktop's address book") : m_info.name;
    if (!error)
        return {ErrorKind::Io, QStringLiteral("%1: %2 failed").arg(book, QString::fromLatin1(what))};
    const auto refusal = refusalOf(error);
    m_hasTimedOut = isTimeout(error);
    if (!refusal)
        disconnect();
    if (m_guard->isGivenUp() && m_hasTimedOut)
        return {ErrorKind::Cancelled, book + QStringLiteral(": reading was given up")};
    QString reason = QString::fromUtf8(error->message).simplified();
    if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED))
        reason = QStringLiteral("no answer within %1 s").arg(double(m_guard->callLimit().count()) / 1000);
    while (reason.endsWith(u'.'))
        reason.chop(1);
    return {refusal.value_or(ErrorKind::Unavailable),
        QStringLiteral("%1: %2: %3").arg(book, QString::fromLatin1(what), reason)};
}

Result<void> EdsBook::ensureRegistry()
{
    if (m_registry)
        return {};
    g_autoptr(GError) error = nullptr;
    if (!m_connection) {
        m_connection = g_bus_get_sync(G_BUS_TYPE_SESSION, m_guard->beginCall(), &error);
        if (!m_connection)
            return failure(error, "no session bus");
        // GIO would otherwise end the program together with the bus.
        g_dbus_connection_set_exit_on_close(m_connection, FALSE);
    }
    // As long as anything in the process holds the old connection, GIO hands it out again.
    if (g_dbus_connection_is_closed(m_connection)) {
        disconnect();
        return Error{ErrorKind::Unavailable, QStringLiteral("the session bus has ended")};
    }
    m_registry = e_source_registry_new_sync(m_guard->beginCall(), &error);
    if (!m_registry)
        return failure(error, "Evolution Data Server cannot be reached");
    return {};
}

Result<std::vector<EdsBookInfo>> EdsBook::books()
{
    if (auto ready = ensureRegistry(); !ready)
        return ready.error();
    g_autoptr(ESource) standard = e_source_registry_ref_default_address_book(m_registry);
    GList *sources = e_source_registry_list_enabled(m_registry, E_SOURCE_EXTENSION_ADDRESS_BOOK);
    std::vector<EdsBookInfo> books;
    for (GList *at = sources; at; at = at->next)
        books.push_back(described(E_SOURCE(at->data), standard));
    g_list_free_full(sources, g_object_unref);
    return books;
}

Result<void> EdsBook::connect()
{
    if (m_client && !g_dbus_connection_is_closed(m_connection))
        return {};
    if (m_client)
        disconnect();
    if (auto ready = ensureRegistry(); !ready)
        return ready.error();
    g_autoptr(ESource) standard = e_source_registry_ref_default_address_book(m_registry);
    g_autoptr(ESource) named = e_source_registry_ref_source(m_registry, m_sourceUid.constData());
    ESource *source = m_sourceUid.isEmpty() ? standard : named;
    const auto refused = [this](const char *why) {
        return Error{ErrorKind::NotFound,
            QStringLiteral("eds:%1: %2").arg(QString::fromUtf8(m_sourceUid), QString::fromLatin1(why))};
    };
    if (!source || !e_source_has_extension(source, E_SOURCE_EXTENSION_ADDRESS_BOOK))
        return refused("the desktop has no such address book");
    if (!e_source_registry_check_enabled(m_registry, source))
        return refused("this address book is switched off");
    m_info = described(source, standard);
    m_sourceUid = m_info.uid.toUtf8(); // another book may become the default one
    auto *kind = E_SOURCE_BACKEND(e_source_get_extension(source, E_SOURCE_EXTENSION_ADDRESS_BOOK));
    m_isLocal = qstrcmp(e_source_backend_get_backend_name(kind), "local") == 0;
    g_autoptr(GError) error = nullptr;
    // Not connect_direct, which makes the daemon's file layer SQLite's default in the whole process.
    m_client = e_book_client_connect_sync(source, kNoWait, m_guard->beginCall(), &error);
    if (!m_client)
        return failure(error, "cannot be opened");
    for (const char *signal : {"backend-property-changed", "backend-died"})
        g_signal_connect_swapped(m_client, signal, G_CALLBACK(&EdsBook::onSignal), this);
    m_object.connect(m_connection, m_sourceUid);
    return {};
}

void EdsBook::onSignal(EdsBook *self)
{
    if (self->m_changeListener)
        self->m_changeListener();
}

bool EdsBook::isReadOnly() const
{
    // libebook's answer may be late in a book that has just been opened.
    return m_client && e_client_is_readonly(m_client) && !m_object.isWritable();
}

Result<QByteArray> EdsBook::revision()
{
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (auto ready = connect(); !ready)
            return ready.error();
        g_autoptr(GError) error = nullptr;
        QByteArray revision = m_object.revision(&error);
        if (!error)
            return revision;
        if (isTimeout(error))
            return failure(error, "cannot be read");
        disconnect();
    }
    return QByteArray();
}

Result<void> EdsBook::readAll(const TakePage &take)
{
    if (auto ready = connect(); !ready)
        return ready.error();
    GSList *list = nullptr;
    g_autoptr(GError) error = nullptr;
    if (!e_book_client_get_contacts_uids_sync(client(), "", &list, m_guard->beginCall(), &error))
        return failure(error, "cannot be read");
    std::vector<QByteArray> uids;
    for (GSList *at = list; at; at = at->next)
        uids.emplace_back(static_cast<const char *>(at->data));
    g_slist_free_full(list, g_free);
    std::ranges::sort(uids); // the daemon's own order changes with every card that is changed
    return read(uids, take);
}

Result<void> EdsBook::read(std::span<const QByteArray> uids, const TakePage &take)
{
    const std::size_t total = uids.size();
    std::size_t most = kPageSize;
    for (int failures = 0; !uids.empty();) {
        const auto page = uids.first(std::min(most, uids.size()));
        auto found = cards(page);
        const bool isGone = !found && found.error().kind == ErrorKind::Unavailable && !m_hasTimedOut;
        if (isGone && ++failures <= kMostFailures) { // ended, perhaps by a page too large for one message of the bus
            most = std::max<std::size_t>(page.size() / 2, 1);
            continue;
        }
        if (found && found->size() < page.size())
            found = withMissing(std::move(*found), page);
        if (!found)
            return found.error();
        if (!take(*found, total))
            return Error{ErrorKind::Cancelled, m_info.name + QStringLiteral(": reading was given up")};
        uids = uids.subspan(page.size());
    }
    return {};
}

Result<std::vector<EdsBook::Card>> EdsBook::withMissing(std::vector<Card> cards, std::span<const QByteArray> uids)
{
    const std::size_t found = cards.size();
    for (const QByteArray &uid : uids) {
        const std::span known(cards.data(), found);
        if (std::ranges::binary_search(known, uid, {}, &Card::uid))
            continue;
        EContact *contact = nullptr;
        g_autoptr(GError) error = nullptr;
        if (!e_book_client_get_contact_sync(client(), uid.constData(), &contact, m_guard->beginCall(), &error)) {
            if (g_error_matches(error, E_BOOK_CLIENT_ERROR, E_BOOK_CLIENT_ERROR_CONTACT_NOT_FOUND))
                continue; // removed since
            return failure(error, "cannot be read");
        }
        g_autofree char *text = e_vcard_to_string(E_VCARD(contact), EVC_FORMAT_VCARD_30);
        Card card{uidOf(contact, text), text};
        g_object_unref(contact);
        if (!std::ranges::binary_search(known, card.uid, {}, &Card::uid))
            cards.push_back(std::move(card));
    }
    std::ranges::sort(cards, {}, &Card::uid);
    return cards;
}

Result<std::vector<EdsBook::Card>> EdsBook::cards(std::span<const QByteArray> uids)
{
    if (auto ready = connect(); !ready)
        return ready.error();
    GSList *list = nullptr;
    g_autoptr(GError) error = nullptr;
    if (!e_book_client_get_contacts_sync(client(), queryFor(uids).constData(), &list, m_guard->beginCall(), &error))
        return failure(error, "cannot be read");
    std::vector<Card> cards;
    cards.reserve(uids.size());
    for (GSList *at = list; at; at = at->next) {
        g_autofree char *text = e_vcard_to_string(E_VCARD(at->data), EVC_FORMAT_VCARD_30);
        cards.push_back({uidOf(E_CONTACT(at->data), text), text});
    }
    g_slist_free_full(list, g_object_unref);
    std::ranges::sort(cards, {}, &Card::uid);
    return cards;
}

std::size_t EdsBook::cardsAtOnce() const
{
    return m_isLocal ? kPageSize : kCardsToServer;
}

Result<void> EdsBook::change(Change change, const std::vector<Card> &cards)
{
    if (auto ready = connect(); !ready)
        return ready.error();
    const bool removes = change == Change::Remove;
    GSList *list = nullptr; // of uids or contacts
    for (auto card = cards.rbegin(); card != cards.rend(); ++card)
        list = g_slist_prepend(list,
            removes ? gpointer(g_strdup(card->uid.constData()))
                    : e_contact_new_from_vcard_with_uid(card->text.constData(), card->uid.constData()));
    GSList *addedUids = nullptr;
    g_autoptr(GError) error = nullptr;
    const auto make = [&](GCancellable *call) -> bool {
        if (removes)
            return e_book_client_remove_contacts_sync(client(), list, kWriteFlags, call, &error);
        if (change == Change::Modify)
            return e_book_client_modify_contacts_sync(client(), list, kWriteFlags, call, &error);
        return e_book_client_add_contacts_sync(client(), list, kWriteFlags, &addedUids, call, &error);
    };
    const bool isDone = make(m_guard->beginCall());
    g_slist_free_full(list, removes ? g_free : g_object_unref);
    g_slist_free_full(addedUids, g_free);
    if (isDone)
        return {};
    Error refusal = failure(error, "cannot be changed");
    // Else the daemon would go on to compare with what its copy of the server's book said before.
    if (refusal.kind == ErrorKind::Conflict && !m_isLocal && e_client_check_refresh_supported(m_client))
        e_client_refresh_sync(m_client, m_guard->beginCall(), nullptr);
    return refusal;
}
