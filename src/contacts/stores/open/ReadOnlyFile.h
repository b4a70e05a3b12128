// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/AddressBookStore.h"

#include <memory>

class PrivateCopy;

/// An address book file that cannot be written: on a full disk, on a read-only medium, or not the user's to write.
/// SQLite needs to write even to read, so a private copy is read, brought to the present format if need be. It shows
/// the file as it was when it was opened.
class ReadOnlyFile : public AddressBookStore
{
public:
    /// @p reason: why the file cannot be opened for writing.
    static Result<std::unique_ptr<AddressBookStore>> open(const QString &path, const Error &reason);
    ~ReadOnlyFile() override;

    Result<std::vector<StoredRecord>> loadAll() override;
    Result<void> commit(const std::vector<RecordChange> &changes) override;
    Result<std::vector<OutsideChange>> takeChangesFromOutside() override { return std::vector<OutsideChange>(); }
    Result<std::vector<ChangeSummary>> history() override;
    Result<ChangeStep> historyStep(const QString &causeId) override;
    bool canWrite() const override { return false; }
    Error readOnlyReason() const override { return m_reason; }
    QString name() const override { return m_path; }
    /// The copy: backups take it with its history.
    QString file() const override { return m_store->file(); }

private:
    ReadOnlyFile(
        QString path, Error reason, std::unique_ptr<PrivateCopy> copy, std::unique_ptr<AddressBookStore> store);
    /// Names the file in errors about the copy.
    template <typename T> Result<T> named(Result<T> result) const;

    const QString m_path;
    const Error m_reason;
    const std::unique_ptr<PrivateCopy> m_copy;
    const std::unique_ptr<AddressBookStore> m_store; // of the copy
};
