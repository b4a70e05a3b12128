// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/formats/ExportContact.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

/// Asks for folder, format and fields of an export, and offers the last choice again.
class ExportWindow : public QDialog, public ExportPanel
{
    Q_OBJECT

public:
    explicit ExportWindow(QWidget *parent);

    void beginSheet(std::function<void(const std::optional<ExportChoice> &)> done) override;

    /// A missing folder is created when the export begins.
    void setFolder(const QString &folder);
    void accept() override;
    QComboBox *selectedButton() const { return m_format; }

private:
    void chooseFolder();
    void judgeFolder();
    void say(const QString &reason);
    void end(int result);

    QLineEdit *m_folder;
    QComboBox *m_format;
    QRadioButton *m_tableFields;
    QLabel *m_reason;
    QPushButton *m_save = nullptr; // created by the button box
    std::function<void(const std::optional<ExportChoice> &)> m_done;
};
