// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/BookPages.h"

#include <string_view>

namespace {

/// The uid in a card's text; empty where that would take more than a look. Asking libebook makes it parse the whole
/// card, which costs more than the card's way through the bus.
QByteArray plainUid(std::string_view text)
{
    constexpr std::string_view head = "\nUID:";
    const std::size_t at = text.find(head);
    if (at == std::string_view::npos)
        return {};
    const std::size_t begin = at + head.size();
    const std::size_t end = text.find('\n', begin);
    if (end == std::string_view::npos || end + 1 >= text.size() || text[end + 1] == ' ' || text[end + 1] == '\t')
        return {};
    std::string_view uid = text.substr(begin, end - begin);
    if (uid.ends_with('\r'))
        uid.remove_suffix(1);
    // Such as the daemon reads otherwise: escaped, or with blanks, which it takes off.
    const bool isPlain = uid.find('\\') == std::string_view::npos
        && (uid.empty() || (!g_ascii_isspace(uid.front()) && !g_ascii_isspace(uid.back())));
    if (!isPlain)
        return {};
    return {uid.data(), qsizetype(uid.size())};
}

QByteArray uidOf(EContact *contact)
{
    return static_cast<const char *>(e_contact_get_const(contact, E_CONTACT_UID));
}

void answer(GObject *book, GAsyncResult *result, gpointer asked)
{
    auto *request = static_cast<PageRequest *>(asked);
    e_book_client_get_contacts_finish(E_BOOK_CLIENT(book), result, &request->list, &request->error);
    request->hasAnswer = true;
}

void passOn(GCancellable * /*from*/, gpointer stop)
{
    g_cancellable_cancel(static_cast<GCancellable *>(stop));
}

} // namespace

QByteArray queryFor(std::span<const QByteArray> uids)
{
    QByteArray query = "(or";
    for (QByteArray uid : uids)
        query += R"( (is "id" ")" + uid.replace('\\', "\\\\").replace('"', "\\\"") + "\")";
    return query + ')';
}

std::vector<EdsBook::Card> takeCards(GSList *list)
{
    std::vector<EdsBook::Card> cards;
    cards.reserve(g_slist_length(list));
    for (GSList *at = list; at; at = at->next) {
        auto *contact = static_cast<EContact *>(at->data);
        char *text = e_vcard_to_string(E_VCARD(contact), EVC_FORMAT_VCARD_30);
        const QByteArray uid = plainUid(text);
        cards.push_back({uid.isEmpty() ? uidOf(contact) : uid, QByteArray(text)});
        g_free(text);
    }
    g_slist_free_full(list, g_object_unref);
    return cards;
}

std::vector<EdsBook::Card> cardsOf(std::span<const QByteArray> texts)
{
    std::vector<EdsBook::Card> cards;
    cards.reserve(texts.size());
    for (const QByteArray &text : texts) {
        QByteArray uid = plainUid({text.constData(), std::size_t(text.size())});
        if (uid.isEmpty()) {
            EContact *contact = e_contact_new_from_vcard(text.constData());
            uid = uidOf(contact);
            g_object_unref(contact);
        }
        cards.push_back({uid, text});
    }
    return cards;
}

PageRequest::PageRequest(EBookClient *book, const QByteArray &query, std::size_t uids)
    : size(uids), stop(g_cancellable_new())
{
    e_book_client_get_contacts(book, query.constData(), stop, &answer, this);
}

PageRequest::~PageRequest()
{
    g_clear_error(&error);
    g_slist_free_full(list, g_object_unref);
    g_object_unref(stop);
}

void PageRequest::wait(CallGuard &guard)
{
    const CallGuard::Call call = guard.beginCall();
    const gulong link = g_cancellable_connect(call, G_CALLBACK(&passOn), stop, nullptr);
    while (!hasAnswer)
        g_main_context_iteration(g_main_context_get_thread_default(), TRUE);
    g_cancellable_disconnect(call, link);
}

void PageRequest::cancel(CallGuard &guard)
{
    g_cancellable_cancel(stop);
    wait(guard);
}
