// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/AlertPanel.h"
#include "base/Job.h"
#include "table/grid/ContactTableModel.h"
#include "table/grid/RowOrder.h"

#include <QDate>

#include <optional>

class RowExporter;

/// What the contact table needs from the program, on the main thread.
class ContactTableDelegate
{
public:
    virtual ~ContactTableDelegate() = default;

    /// The requested rows are there.
    virtual void makeFreshButtonEnable() = 0;
    virtual AlertPanel &alertPanel() = 0;
    /// Null: no exports.
    virtual RowExporter *rowExporter() = 0;
};

/// The contact table without its window: loads everyone from the shared address book, writes edits back, sorts,
/// deletes, and passes rows to the exporter. Main thread unless documented otherwise.
class LoadContactsViewController : public QObject
{
    Q_OBJECT

public:
    /// @p delegate must outlive the controller.
    explicit LoadContactsViewController(ContactTableDelegate &delegate, QObject *parent = nullptr);

    const PersonRows &getTableViewDataArray() const { return m_table.rows(); }
    ContactTableModel *getTableView() { return &m_table; }
    const ContactTableModel *getTableView() const { return &m_table; }

    /// Starts to reload everyone, including outside changes, in a job; returns immediately. Replaces a running load.
    /// The rows come in address book order, whatever the table was sorted by.
    void loadPersonInAddressBook();
    /// All rows, in address book order; empty without an address book. Any thread; when stopped, returns only some of
    /// the rows.
    static PersonRows loadPeople(const std::shared_ptr<ABAddressBook> &book, const std::stop_token &isSuperseded = {});
    static PersonDictionary prasePerson(const ABPersonPtr &person);
    void updateTableView(const PersonRows &allPeopleArray);
    void tableViewReloadData();

    int numberOfRowsInTableView() const { return m_table.rowCount(); }
    FieldValue objectValue(Field forTableColumn, int row) const;
    /// Puts the value into the row, commits it and starts a load. The error says why the commit failed.
    Result<void> setObjectValue(const FieldValue &value, Field forTableColumn, int row);
    /// The same for typed text. An invalid birthday is Invalid and changes nothing.
    Result<void> editCell(const QString &text, Field field, int row);
    /// The value that editCell() stores: an empty text means no birthday, but an empty value in all other fields.
    static Result<FieldValue> valueFromText(const QString &text, Field field);
    /// During an edit, loaded rows wait, so that none moves or disappears under the editor.
    void setEditing(bool isEditing);
    /// Always true; failed() reports a failed commit.
    bool commitContactsToAddressBook(
        const QString &fieldLabel, const FieldValue &commitValue, const ABPersonPtr &withPerson);

    /// Sorts by these columns, the most important first, until the next load.
    void sortDescriptorsDidChange(const std::vector<SortDescriptor> &descriptors);
    const std::vector<SortDescriptor> &sortDescriptors() const { return m_descriptors; }

    /// Shows the column with this title at the right end or hides it. Ignores other texts.
    void menuDidChange(const QString &itemTitle);
    bool isColumnShown(Field field) const;

    /// Deletes the people of these rows from the address book, after asking. A person whose removal fails or cannot be
    /// saved stays, in the table too.
    void deleteItem(std::vector<int> selectedRows);
    /// Adds a copy of each of these rows' people, with everything but the uid, and starts a load.
    void duplicateItem(const std::vector<int> &selectedRows);
    /// Passes copies of these rows to the exporter, the lowest row first.
    void exportItem(std::vector<int> selectedRows);
    /// Passes it all rows, in their order.
    void exportEverybody() { startExport(m_table.rows(), true); }

Q_SIGNALS:
    /// Emitted on the loading thread with the rows of a load that was not replaced.
    void tableViewDataChange(const PersonRows &allPeopleArray);
    /// A commit, deletion or load failed; the reason is for the user.
    void failed(const QString &reason);
    /// Whether the context menu has rows to work on; emitted before the user is asked about a deletion.
    void contextMenuEnabled(bool isEnabled);

private:
    Result<void> commit(const QString &fieldLabel, const FieldValue &value, const ABPersonPtr &person);
    PersonRows load(const std::stop_token &isSuperseded);
    void installLoad(const PersonRows &rows);
    void startExport(PersonRows rows, bool isEverybody);
    void deletePerson(ABAddressBook &book, const ABPersonPtr &person, int rowBefore, const ChangeCausePtr &cause);

    ContactTableDelegate &m_delegate;
    ContactTableModel m_table;
    std::vector<SortDescriptor> m_descriptors;
    bool m_isLoading = false; // until its rows are shown
    bool m_isEditing = false;
    std::optional<PersonRows> m_heldRows; // of the newest load, waiting for the end of an edit
    Job m_loader; // last: its work uses the members above
};
