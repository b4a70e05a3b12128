// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/BookErrors.h"

#include <libebook/libebook.h>

#include <algorithm>
#include <array>

namespace {

struct KindRow
{
    GQuark (*domain)();
    int code;
    ErrorKind kind;
};

} // namespace

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

bool isTimeout(const GError *error)
{
    return g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED)
        || g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT)
        || g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_TIMEOUT)
        || g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_TIMED_OUT);
}
