// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"

#include <QGroupBox>

class QComboBox;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

/// Edits one multi-value of a contact: one row per entry, with its label as a chip and its text or parts.
class MultiValueEditor : public QGroupBox
{
    Q_OBJECT

public:
    /// @p value may be null for an absent property.
    MultiValueEditor(ABProperty property, const ABMultiValue *value, QWidget *parent = nullptr);

    ABProperty property() const { return m_property; }
    bool isEmpty() const { return m_rows.empty(); }
    /// An empty row with the focus in it.
    void addNew() { addRow(newEntry(), true); }
    /// The content of the rows; std::monostate if the property was absent and has no row. An unedited label is kept as
    /// stored; a missing part that is empty stays missing.
    ABValue value() const;

private:
    struct Row
    {
        QWidget *widget;
        QComboBox *label;
        QString storedLabel;
        QString shownLabel; // as in the new row
        std::vector<QLineEdit *> texts; // one, or one per key
        std::vector<QString> before; // of each; null if missing
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
    QPushButton *m_add;
    std::vector<Row> m_rows;
};
