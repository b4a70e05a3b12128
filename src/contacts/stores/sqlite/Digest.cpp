// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/sqlite/Digest.h"

#include <QCryptographicHash>
#include <QtEndian>

#include <xxhash.h>

Digest digestOf(std::string_view uid, std::string_view document)
{
    Digest digest{};
    const XXH64_hash_t seed = XXH3_64bits(uid.data(), uid.size());
    qToBigEndian<quint64>(XXH3_64bits_withSeed(document.data(), document.size(), seed), digest.data());
    return digest;
}

std::string pictureNameOf(const QByteArray &picture)
{
    return QCryptographicHash::hash(picture, QCryptographicHash::Sha256).toHex().toStdString();
}
