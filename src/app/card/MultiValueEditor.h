// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <QGroupBox>

class QComboBox;
class QLineEdit;
class QVBoxLayout;

/// Edits one multi-value of a contact: a row an entry, with its label and its text or the parts it has.
class MultiValueEditor : public QGroupBox
{
    Q_OBJECT

public:
    /// @p value may be null: the property is absent.
    MultiValueEditor(ABProperty property, const ABMultiValue *value, QWidget *parent = nullptr);

    ABProperty property() const { return m_property; }
    /// What is in the rows. std::monostate when the property was absent and has no row now. A label that nobody
    /// touched stays as it is stored, whatever it looks like; a part that was missing and is empty stays missing.
    ABValue value() const;

private:
    struct Row
    {
        QWidget *widget;
        QComboBox *label;
        QString storedLabel;
        QString shownLabel; // as it was when the row was made
        std::vector<QLineEdit *> texts; // one, or one a key
        std::vector<QString> before; // of each; null where it was missing
    };

    void addRow(const ABMultiValue::Entry &entry, bool isNew);
    void removeRow(const QWidget *widget);
    QLineEdit *addText(Row &row, const QString &title, const QString *text);
    QString labelOf(const Row &row) const;
    ABMultiValue::Value valueOf(const Row &row) const;
    ABMultiValue::Entry newEntry() const;

    const ABProperty m_property;
    const bool m_wasPresent;
    QVBoxLayout *m_layout;
    std::vector<Row> m_rows;
};
