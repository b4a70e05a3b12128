// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"

#include <QTemporaryDir>

#include <memory>

/// A copy of a database file for reading, in a private folder that it removes: SQLite changes files even when it only
/// reads.
class PrivateCopy
{
public:
    enum class Log { With, Without };

    /// The file and its log as of one moment, even while others write them. In memory if the disk is full. Io: it
    /// cannot be read, or there is no room; Unavailable: it keeps changing.
    static Result<std::unique_ptr<PrivateCopy>> of(const QString &path, Log log = Log::With);
    ~PrivateCopy();
    PrivateCopy(const PrivateCopy &) = delete;
    PrivateCopy &operator=(const PrivateCopy &) = delete;

    QString path() const { return m_folder.filePath(QStringLiteral("copy")); }

    /// Removes copies left by killed programs.
    static void removeAbandoned();

private:
    explicit PrivateCopy(const QString &folder);
    static Result<std::unique_ptr<PrivateCopy>> in(const QString &folder, const QString &path, Log log);

    QTemporaryDir m_folder;
    int m_lock; // held as long as this lives
};
