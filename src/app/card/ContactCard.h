// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"

#include <QDialog>

class MultiValueEditor;
class QCheckBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class WrappedText;

/// One contact in full: every property, label and picture, to read and to edit. Only what was edited is written, so
/// what somebody else changes meanwhile stays.
class ContactCard : public QDialog
{
    Q_OBJECT

public:
    ContactCard(const ABPersonPtr &person, QWidget *parent);

    /// Writes and saves what was edited, and closes. On a refused birthday or a failed save it stays open and says why;
    /// after a failed save the person is as before.
    void save();
    /// Takes the picture in this file, or says why not.
    void setPicture(const QString &path);
    /// Asks first where something was edited.
    void reject() override;

Q_SIGNALS:
    void saved();
    void failed(const QString &reason);
    /// The person is damaged and is to be put back as a backup has it; the card is closed.
    void restoreRequested(const QString &uid);

private:
    struct TextField
    {
        ABProperty property;
        QLineEdit *edit;
    };

    void setUpHead(QFormLayout *form);
    void setUpTexts(QFormLayout *form);
    QWidget *makeMultiValues();
    void choosePicture();
    void showPicture();
    void refuse(const QString &reason);
    bool isEdited() const;
    /// The record with the edits; an error names the field that cannot be read.
    Result<PersonRecord> edited() const;
    void applyTexts(PersonRecord &record) const;

    const ABPersonPtr m_person;
    const PersonRecordPtr m_before;
    std::vector<TextField> m_texts;
    std::vector<MultiValueEditor *> m_multiValues;
    QPlainTextEdit *m_note;
    QLineEdit *m_birthday;
    QCheckBox *m_isCompany;
    QLabel *m_picture;
    WrappedText *m_reason;
    QByteArray m_pictureData;
};
