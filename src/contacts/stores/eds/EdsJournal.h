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

/// Tells other programs that a file is in use, for as long as it lives; null for none.
using FileLock = std::unique_ptr<QFile>;

/// What a save is about to do to each card, on the disk before the daemon is asked. A journal that is still there means
/// that it is not known how the save ended; one that ended well is kept as the history of the book.
/// Each book has a folder, and each save of each program a journal, locked while the save is under way.
class EdsJournal
{
public:
    struct Entry
    {
        QByteArray uid;
        QByteArray before; ///< the card as it was, picture included; null: there was none
        QByteArray after; ///< the card that was asked for; null: it is to be removed
        ChangeCausePtr cause = {}; ///< null in what was written before journals told causes
    };

    explicit EdsJournal(QString folder);

    /// Io: nothing is on the disk and nothing must be changed.
    Result<void> begin(const std::vector<Entry> &entries);
    /// The save is in the book, whole: the journal becomes history.
    void finish();
    /// Nothing of the save is in the book.
    void discard();
    /// A save whose end is not known, of this object or of one that no longer exists; empty where there is none. A
    /// journal that cannot be read is put aside.
    std::vector<Entry> unfinished();

private:
    bool moveToHistory();

    QString m_folder;
    bool m_isHistoryPruned = false; // in this run
    QString m_current; // the file that begin() or unfinished() stands on; empty for none
    FileLock m_lock; // on it
};

/// The entries of a journal's text; nothing where it is none.
std::optional<std::vector<EdsJournal::Entry>> journalEntries(const QByteArray &text);

/// The folder of one book's journal, history and backups in the program's @p dataFolder.
QString folderOfBook(const QString &dataFolder, const QString &sourceUid);
/// Writes @p text as a new file, on the disk when this returns.
/// @p lock gets hold of it before anybody can see it.
Result<void> writeDurably(const QString &path, const QByteArray &text, FileLock *lock = nullptr);
/// Removes all but the newest of the files that match; their names must sort by age.
void keepNewest(const QString &folder, const QString &pattern, qsizetype count);
