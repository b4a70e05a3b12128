// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QUrl>

// Reserved for examples (RFC 2606, section 3) until the product has a domain.
inline const QUrl kProductPage(QStringLiteral("https://peoplenook.example.org/"));
inline const QUrl kSupportPage(QStringLiteral("https://peoplenook.example.org/support"));
