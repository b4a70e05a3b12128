// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"

#include <QDialog>

#include <span>

class ABAddressBook;
class CardHead;
class FieldSection;
class MultiValueEditor;
class NoteBox;
class QBoxLayout;
class QCheckBox;
class QDialogButtonBox;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class Strip;

/// One contact in full, for viewing and editing: every property, label and picture. Only edits are written, so changes
/// by others are kept. An empty person in no address book stands for a new contact: if something is typed in, a contact
/// is added with it.
class ContactCard : public QDialog
{
    Q_OBJECT

public:
    ContactCard(const ABPersonPtr &person, QWidget *parent);

    /// Saves the edits and closes. After an invalid birthday or a failed save it stays open and shows the reason; a
    /// failed save leaves the person unchanged.
    void save();
    /// Puts the focus into the first field that has this text, if one does.
    void focusOn(const QString &text);
    /// Uses the picture in this file, or shows why not.
    void setPicture(const QString &path);
    /// Asks first if there are edits.
    void reject() override;

Q_SIGNALS:
    void saved(const QString &uid);
    void failed(const QString &reason);
    /// The damaged person should be restored from a backup; the card is closed.
    void restoreRequested(const QString &uid);
    void historyRequested(const ABPersonPtr &person);
    /// The user is to be asked; the card closes if the person is gone after that.
    void deletionRequested(const ABPersonPtr &person);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    struct TextField
    {
        ABProperty property;
        QLineEdit *edit;
    };

    QWidget *makeTexts();
    QWidget *makeMultiValues();
    QDialogButtonBox *makeButtons();
    FieldSection *makeSection(const QString &title, std::span<const ABProperty> properties);
    QWidget *makeBirthday();
    void offerMultiValues(QPushButton *add);
    void showName();
    void judgeBirthday();
    void refuse(const QString &reason);
    void refuseSave(const Error &error);
    void saveNew(ABAddressBook &book, const PersonRecord &record);
    bool isEdited() const;
    /// The edited record; an error names the invalid field.
    Result<PersonRecord> edited() const;
    void applyTexts(PersonRecord &record) const;

    const ABPersonPtr m_person;
    const PersonRecordPtr m_before;
    const bool m_isNew;
    std::vector<TextField> m_texts;
    std::vector<MultiValueEditor *> m_multiValues;
    QBoxLayout *m_columns = nullptr;
    CardHead *m_head;
    FieldSection *m_dates = nullptr;
    NoteBox *m_noteBox;
    QPlainTextEdit *m_note;
    QLineEdit *m_birthday;
    QCheckBox *m_isCompany;
    Strip *m_reason;
};
