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

/// What the contact table asks of the program around it, on the main thread.
class ContactTableDelegate
{
public:
    virtual ~ContactTableDelegate() = default;

    /// The rows that were asked for are there.
    virtual void makeFreshButtonEnable() = 0;
    virtual AlertPanel &alertPanel() = 0;
    /// Null: nothing is exported.
    virtual RowExporter *rowExporter() = 0;
};

/// The contact table without its window: loads everybody from the shared address book, writes edits back, sorts,
/// deletes, hands over to the exporter. For the main thread, but where it says otherwise.
class LoadContactsViewController : public QObject
{
    Q_OBJECT

public:
    /// @p delegate must outlive the controller.
    explicit LoadContactsViewController(ContactTableDelegate &delegate, QObject *parent = nullptr);

    const PersonRows &getTableViewDataArray() const { return m_table.rows(); }
    ContactTableModel *getTableView() { return &m_table; }
    const ContactTableModel *getTableView() const { return &m_table; }

    /// Starts to read everybody anew, with what others changed meanwhile, on a thread of its own; returns at once.
    /// A load that is still running is given up. The rows come in the order of the address book, whatever the table
    /// was sorted by.
    void loadPersonInAddressBook();
    /// Everybody's rows, in the order of the address book; empty without an address book. Any thread; stops early,
    /// with some of the rows, when told to.
    static PersonRows loadPeople(const std::shared_ptr<ABAddressBook> &book, const std::stop_token &isSuperseded = {});
    /// As the contact table reads a person.
    static PersonDictionary prasePerson(const ABPersonPtr &person);
    void updateTableView(const PersonRows &allPeopleArray);
    void tableViewReloadData();

    int numberOfRowsInTableView() const { return m_table.rowCount(); }
    FieldValue objectValue(Field forTableColumn, int row) const;
    /// Puts the value into the row, commits it and starts a load. The error says why the commit failed.
    Result<void> setObjectValue(const FieldValue &value, Field forTableColumn, int row);
    /// The same for what a user typed. A birthday that cannot be read is Invalid and changes nothing.
    Result<void> editCell(const QString &text, Field field, int row);
    /// The value that editCell() stores: an empty text means no birthday, but an empty value in every other field.
    static Result<FieldValue> valueFromText(const QString &text, Field field);
    /// While a cell is being edited, the rows of a load wait, so that none moves or disappears under the editor.
    void setEditing(bool isEditing);
    /// Always true; failed() tells of a commit that failed.
    bool commitContactsToAddressBook(
        const QString &fieldLabel, const FieldValue &commitValue, const ABPersonPtr &withPerson);

    /// Sorts by the given columns, the most important first. The next load brings the address book's order back.
    void sortDescriptorsDidChange(const std::vector<SortDescriptor> &descriptors);
    const std::vector<SortDescriptor> &sortDescriptors() const { return m_descriptors; }

    /// Shows the column with this title at the right end or, if it is shown, hides it. Other texts change nothing.
    void menuDidChange(const QString &itemTitle);
    bool isColumnShown(Field field) const;

    /// Asks, then deletes the people of these rows from the address book. A person that could not be removed or whose
    /// removal could not be saved stays, in the table too.
    void deleteItem(std::vector<int> selectedRows);
    /// Hands copies of these rows to the exporter, the lowest row first.
    void exportItem(std::vector<int> selectedRows);

Q_SIGNALS:
    /// Emitted on the loading thread with the rows of a load that was not superseded.
    void tableViewDataChange(const PersonRows &allPeopleArray);
    /// A commit, deletion or load failed; the reason is for the user.
    void failed(const QString &reason);
    /// Whether the context menu's items have rows to work on; emitted before the user is asked about a deletion.
    void contextMenuEnabled(bool isEnabled);

private:
    Result<void> commit(const QString &fieldLabel, const FieldValue &value, const ABPersonPtr &person);
    PersonRows load(const std::stop_token &isSuperseded);
    void installLoad(const PersonRows &rows);
    void deletePerson(ABAddressBook &book, const ABPersonPtr &person, int rowBefore, const ChangeCausePtr &cause);

    ContactTableDelegate &m_delegate;
    ContactTableModel m_table;
    std::vector<SortDescriptor> m_descriptors;
    bool m_isLoading = false; // until the rows are shown
    bool m_isEditing = false;
    std::optional<PersonRows> m_heldRows; // of the newest load, if they wait for the end of an edit
    Job m_loader; // last: its work uses the members above
};
