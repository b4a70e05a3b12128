// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QGroupBox>

#include <vector>

class QFormLayout;
class QLabel;
class QPushButton;

/// A flat button "+ Add ...", as it is below each section of the card.
QPushButton *makeAddButton(QWidget *parent);

/// A box of fields with their titles. Fields without a value stay hidden until the button below adds them.
class FieldSection : public QGroupBox
{
    Q_OBJECT

public:
    explicit FieldSection(const QString &title, QWidget *parent = nullptr);

    void add(const QString &title, QWidget *field, bool isShown);
    /// Below a field of this section; empty: nothing is wrong with it.
    void setError(QWidget *field, const QString &reason);

private:
    struct Field
    {
        QString title;
        QWidget *widget;
        bool isShown;
        QLabel *error = nullptr;
    };

    void show(Field &field);
    void offerHidden();
    void addHidden();

    QFormLayout *m_form;
    QPushButton *m_add;
    std::vector<Field> m_fields;
};
