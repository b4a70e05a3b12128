// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/grid/LoadContactsViewController.h"

#include "base/Job.h"
#include "contacts/book/ChangeCause.h"
#include "contacts/model/NameTexts.h"
#include "table/fields/FieldCommit.h"
#include "table/fields/TableLog.h"
#include "table/grid/BirthdayText.h"
#include "table/grid/RowExporter.h"

#include <algorithm>
#include <utility>

LoadContactsViewController::LoadContactsViewController(ContactTableDelegate &delegate, QObject *parent)
    : QObject(parent)
    , m_delegate(delegate)
    , m_table([this](const QString &text, Field field, int row) { return editCell(text, field, row); })
{ }

void LoadContactsViewController::loadPersonInAddressBook()
{
    m_isLoading = true;
    m_heldRows.reset();
    m_loader.restart([this](const std::stop_token &isSuperseded) { return load(isSuperseded); },
        [this](const PersonRows &rows) { installLoad(rows); });
}

PersonRows LoadContactsViewController::load(const std::stop_token &isSuperseded)
{
    const auto book = ABAddressBook::sharedAddressBook();
    if (book) {
        if (const auto refreshed = book->catchUp(); !refreshed) {
            qCWarning(lcTable).noquote() << refreshed.error().description();
            Q_EMIT failed(refreshed.error().description());
        }
    }
    PersonRows rows = loadPeople(book, isSuperseded);
    if (!isSuperseded.stop_requested())
        Q_EMIT tableViewDataChange(rows);
    return rows;
}

void LoadContactsViewController::installLoad(const PersonRows &rows)
{
    if (m_isEditing) {
        m_heldRows = rows;
        return;
    }
    m_isLoading = false;
    updateTableView(rows);
    m_delegate.makeFreshButtonEnable();
}

void LoadContactsViewController::setEditing(bool isEditing)
{
    m_isEditing = isEditing;
    if (!isEditing && m_heldRows)
        installLoad(*std::exchange(m_heldRows, std::nullopt));
}

PersonRows LoadContactsViewController::loadPeople(
    const std::shared_ptr<ABAddressBook> &book, const std::stop_token &isSuperseded)
{
    PersonRows rows;
    if (!book)
        return rows;
    const PeopleSnapshot everybody = book->snapshot();
    rows.reserve(everybody->size());
    for (const auto &[person, record] : *everybody) {
        if (isSuperseded.stop_requested())
            break;
        rows.push_back(std::make_shared<const PersonDictionary>(::prasePerson(person, record, DictionaryForm::Table)));
    }
    return rows;
}

PersonDictionary LoadContactsViewController::prasePerson(const ABPersonPtr &person)
{
    return ::prasePerson(person, DictionaryForm::Table);
}

void LoadContactsViewController::updateTableView(const PersonRows &allPeopleArray)
{
    m_table.setRows(allPeopleArray);
}

void LoadContactsViewController::tableViewReloadData()
{
    m_table.setRows(m_table.rows());
}

FieldValue LoadContactsViewController::objectValue(Field forTableColumn, int row) const
{
    return m_table.rowAt(row)->value(forTableColumn);
}

Result<void> LoadContactsViewController::setObjectValue(const FieldValue &value, Field forTableColumn, int row)
{
    auto changed = std::make_shared<PersonDictionary>(*m_table.rowAt(row));
    changed->setValue(value, forTableColumn);
    const ABPersonPtr person = changed->person();
    m_table.setRow(row, std::move(changed));
    auto committed = commit(fieldInfo(forTableColumn).label, value, person);
    loadPersonInAddressBook();
    return committed;
}

Result<void> LoadContactsViewController::editCell(const QString &text, Field field, int row)
{
    const auto value = valueFromText(text, field);
    return value ? setObjectValue(*value, field, row) : value.error();
}

Result<FieldValue> LoadContactsViewController::valueFromText(const QString &text, Field field)
{
    if (fieldInfo(field).family != FieldFamily::Date)
        return FieldValue(text);
    if (text.trimmed().isEmpty())
        return FieldValue();
    const auto date = birthdayFromText(text, QLocale(), QDate::currentDate());
    return date ? Result<FieldValue>(*date) : date.error();
}

bool LoadContactsViewController::commitContactsToAddressBook(
    const QString &fieldLabel, const FieldValue &commitValue, const ABPersonPtr &withPerson)
{
    static_cast<void>(commit(fieldLabel, commitValue, withPerson));
    return true;
}

Result<void> LoadContactsViewController::commit(
    const QString &fieldLabel, const FieldValue &value, const ABPersonPtr &person)
{
    auto committed = FieldCommit::commitContactsToAddressBook(fieldLabel, value, person);
    if (!committed)
        Q_EMIT failed(committed.error().description());
    return committed;
}

void LoadContactsViewController::sortDescriptorsDidChange(const std::vector<SortDescriptor> &descriptors)
{
    m_descriptors = descriptors;
    m_table.setRows(sortedRows(m_table.rows(), m_descriptors, QLocale().collation()));
}

void LoadContactsViewController::menuDidChange(const QString &itemTitle)
{
    const auto field = fieldLabelled(itemTitle);
    if (!field)
        return;
    if (isColumnShown(*field))
        m_table.hideColumn(*field);
    else
        m_table.showColumn(*field);
}

bool LoadContactsViewController::isColumnShown(Field field) const
{
    return std::ranges::find(m_table.columns(), field) != m_table.columns().end();
}

void LoadContactsViewController::deleteItem(std::vector<int> selectedRows)
{
    std::ranges::sort(selectedRows, std::greater<>());
    // Without a selection the row number is -1, written without its sign.
    qCDebug(lcTable, "%lu", static_cast<unsigned long>(selectedRows.empty() ? -1L : selectedRows.front()));
    Q_EMIT contextMenuEnabled(!selectedRows.empty());
    PersonRows selected; // a load may put other people into these rows while the question is open
    for (const int row : selectedRows)
        selected.push_back(m_table.rowAt(row));
    const auto answer =
        m_delegate.alertPanel().runAlertPanel(QStringLiteral("Are you sure you want to delete the selected person ?"),
            QStringLiteral("This person will also delete from Contacts."), QStringLiteral("Delete"),
            QStringLiteral("Cancel"));
    if (answer == AlertPanel::Answer::Alternate) {
        qCDebug(lcTable, "取消删除");
        return;
    }
    qCDebug(lcTable, "确认删除");
    const auto book = ABAddressBook::sharedAddressBook();
    if (book) {
        const auto cause = makeCause(ChangeCause::Kind::Deletion,
            selected.size() == 1 ? readableName(*selected.front()->person()->record())
                                 : QString(QString::number(selected.size()) % QStringLiteral(" contacts")));
        for (std::size_t i = 0; i < selected.size(); ++i)
            deletePerson(*book, selected[i]->person(), selectedRows[i], cause);
    }
    tableViewReloadData();
    if (m_isLoading) // it may have read the people while they were there
        loadPersonInAddressBook();
}

void LoadContactsViewController::deletePerson(
    ABAddressBook &book, const ABPersonPtr &person, int rowBefore, const ChangeCausePtr &cause)
{
    Error error;
    if (!book.removeRecord(person, &error)) {
        qCDebug(lcTable, "删除失败");
        Q_EMIT failed(error.description());
        return;
    }
    if (!book.save(&error, cause)) {
        // The row stays, so the person must: else the next save of anything would delete somebody who is shown.
        book.addRecord(person);
        Q_EMIT failed(error.description());
        return;
    }
    qCDebug(lcTableOut, "删除成功 success\n");
    const PersonRows &rows = m_table.rows();
    const auto isOfPerson = [&person](const PersonRow &row) { return row->person() == person; };
    auto row = rows.begin() + std::min(rowBefore, m_table.rowCount());
    if (row == rows.end() || !isOfPerson(*row))
        row = std::ranges::find_if(rows, isOfPerson);
    if (row != rows.end())
        m_table.takeRow(static_cast<int>(row - rows.begin()));
}

void LoadContactsViewController::duplicateItem(const std::vector<int> &selectedRows)
{
    const auto book = ABAddressBook::sharedAddressBook();
    if (!book || selectedRows.empty())
        return;
    QList<ABPersonPtr> copies;
    for (const int row : selectedRows) {
        const ABPersonPtr &person = m_table.rowAt(row)->person();
        if (person->isDamaged()) { // a copy would look whole
            Q_EMIT failed(person->uniqueId() % QStringLiteral(": is damaged; nothing was duplicated"));
            return;
        }
        copies += std::make_shared<ABPerson>();
        copies.back()->replaceRecord(person->record());
    }
    for (const ABPersonPtr &copy : std::as_const(copies))
        book->addRecord(copy);
    const QString what = copies.size() == 1 ? readableName(*copies.front()->record())
                                            : QString(QString::number(copies.size()) % QStringLiteral(" contacts"));
    Error error;
    if (!book->save(&error, makeCause(ChangeCause::Kind::Card, QStringLiteral("copy of ") % what))) {
        for (const ABPersonPtr &copy : std::as_const(copies)) // or the next save would write them
            book->removeRecord(copy);
        Q_EMIT failed(error.description());
    }
    loadPersonInAddressBook();
}

void LoadContactsViewController::exportItem(std::vector<int> selectedRows)
{
    std::ranges::sort(selectedRows, std::greater<>());
    PersonRows rows;
    for (const int row : selectedRows) {
        auto copy = std::make_shared<PersonDictionary>(*m_table.rowAt(row));
        copy->removePerson();
        rows.push_back(std::move(copy));
    }
    startExport(std::move(rows), false);
}

void LoadContactsViewController::startExport(PersonRows rows, bool isEverybody)
{
    RowExporter *exporter = m_delegate.rowExporter();
    if (!exporter)
        return;
    exporter->setLoadContactsViewController(this);
    exporter->setIsExportAllPeople(isEverybody);
    exporter->setExportArray(std::move(rows));
    exporter->startExport();
}
