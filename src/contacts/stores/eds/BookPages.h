// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/stores/eds/EdsBook.h"

#include <libebook/libebook.h>

/// Asks for the cards with these uids.
QByteArray queryFor(std::span<const QByteArray> uids);

/// The contacts as texts; gives the list back.
std::vector<EdsBook::Card> takeCards(GSList *contacts);

/// The cards with these texts.
std::vector<EdsBook::Card> cardsOf(std::span<const QByteArray> texts);

/// One page of cards on its way. The answer comes on the thread that made it, while that waits.
struct PageRequest
{
    PageRequest(EBookClient *book, const QByteArray &query, std::size_t uids);
    /// Not before there is an answer.
    ~PageRequest();
    PageRequest(const PageRequest &) = delete;
    PageRequest &operator=(const PageRequest &) = delete;

    /// Not longer than the guard allows.
    void wait(CallGuard &guard);
    void cancel(CallGuard &guard);

    std::size_t size; // in uids
    GCancellable *stop;
    GSList *list = nullptr; // of contacts; whoever takes it gives it back
    GError *error = nullptr;
    bool hasAnswer = false;
};
