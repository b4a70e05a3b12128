// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QGroupBox>

class QPlainTextEdit;

/// The note of a contact, in a field that grows with it up to some lines.
class NoteBox : public QGroupBox
{
    Q_OBJECT

public:
    /// @p note may be null.
    explicit NoteBox(const QString *note, QWidget *parent = nullptr);

    QPlainTextEdit *edit() const { return m_edit; }

private:
    void fit();

    QPlainTextEdit *m_edit;
};
