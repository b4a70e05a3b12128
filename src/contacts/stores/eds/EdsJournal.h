// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Result.h"
#include "contacts/book/ChangeCause.h"

#include <QByteArray>
#include <QFile>

#include <memory>
#include <optional>
#include <vector>

/// Marks a file as in use while it lives; null for none.
using FileLock = std::unique_ptr<QFile>;

/// What a save will do to each card, on the disk before the daemon is asked. A journal that remains means that the
/// outcome is unknown; that of a successful save becomes the book's history. Each save of each program has a journal in
/// the book's folder, locked during the save.
class EdsJournal
{
public:
    struct Entry
    {
        QByteArray uid;
        QByteArray before; ///< the card as it was, picture included; null: there was none
        QByteArray after; ///< the requested card; null: remove it
        ChangeCausePtr cause = {}; ///< null in journals from before causes
    };

    explicit EdsJournal(QString folder);

    /// Io: nothing is on the disk, so nothing may be changed.
    Result<void> begin(const std::vector<Entry> &entries);
    /// The save is complete: the journal becomes history.
    void finish();
    /// Nothing of the save is in the book.
    void discard();
    /// A save with unknown outcome, of this object or of one that no longer exists; empty if there is none. Puts an
    /// unreadable journal aside.
    std::vector<Entry> unfinished();

private:
    bool moveToHistory();

    QString m_folder;
    bool m_isHistoryPruned = false; // in this run
    QString m_current; // the file of begin() or unfinished(); empty for none
    FileLock m_lock; // on it
};

/// Nothing if @p text is no journal.
std::optional<std::vector<EdsJournal::Entry>> journalEntries(const QByteArray &text);

/// The folder in the program's @p dataFolder for a book's journal, history and backups.
QString folderOfBook(const QString &dataFolder, const QString &sourceUid);
/// Writes a new file, on the disk when this returns. @p lock locks it before it becomes visible.
Result<void> writeDurably(const QString &path, const QByteArray &text, FileLock *lock = nullptr);
