// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABAddressBook.h"
#include "contacts/cards/RecordSource.h"

#include <functional>

enum class RecordFormat { VCard, JsonLines };

/// The format of these bytes; anything that is not JSON counts as vCard.
RecordFormat formatOfContent(const QByteArray &content);
std::unique_ptr<RecordSource> recordSource(const QByteArray &content, RecordFormat format);

/// For a record whose uid belongs to one with other content.
enum class OnOtherContent { AddUnderNewUid, Replace };

/// The result of importing one file.
struct ImportReport
{
    qint64 imported = 0; ///< people added or replaced
    qint64 alreadyThere = 0; ///< people already stored with the same content
    std::vector<ImportProblem> problems; ///< what was skipped, in file order
    bool cancelled = false; ///< nothing was imported
    std::optional<Error> error; ///< why nothing was imported
};

/// Reports how many bytes of how many are read; returns false to stop.
using ImportProgress = std::function<bool(qint64 done, qint64 total)>;

/// Reads everything first, then adds and saves it, so the address book is changed as a whole or not at all, while
/// others keep using it. Importing a file twice changes nothing: people without a uid get one made from their content.
ImportReport importFile(ABAddressBook &book, std::unique_ptr<RecordSource> source, const QString &fileName,
    const ImportProgress &progress = {}, OnOtherContent onOtherContent = OnOtherContent::AddUnderNewUid);
