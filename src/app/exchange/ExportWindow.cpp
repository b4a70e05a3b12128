// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/exchange/ExportWindow.h"

#include "app/look/Controls.h"
#include "app/look/FileDialog.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardPaths>

#include <utility>

ExportWindow::ExportWindow(QWidget *parent)
    : QDialog(parent)
    , m_folder(new QLineEdit(this))
    , m_format(new QComboBox(this))
    , m_tableFields(new QRadioButton(tr("Only the fields that the table shows"), this))
    , m_reason(new QLabel(this))
{
    setWindowTitle(tr("Export"));
    for (const ExportContact::Format &format : ExportContact::formats())
        m_format->addItem(format.title);
    m_format->setAccessibleName(tr("Format"));
    m_folder->setAccessibleName(tr("Folder"));
    m_folder->setMinimumWidth(m_folder->fontMetrics().averageCharWidth() * 40);
    m_tableFields->setChecked(true);
    auto *choose = new QPushButton(tr("Choose ..."));
    connect(choose, &QPushButton::clicked, this, &ExportWindow::chooseFolder);
    m_reason->setTextFormat(Qt::PlainText);
    m_reason->setWordWrap(true);
    setTextColour(m_reason, ColourRole::Quiet);
    auto *where = new QGroupBox(tr("Where"));
    auto *grid = new QGridLayout(where);
    grid->addWidget(new QLabel(tr("Folder")), 0, 0);
    grid->addWidget(m_folder, 0, 1);
    grid->addWidget(choose, 0, 2);
    grid->addWidget(m_reason, 1, 1, 1, 2);
    grid->addWidget(new QLabel(tr("Format")), 2, 0);
    grid->addWidget(m_format, 2, 1, 1, 2);
    auto *what = new QGroupBox(tr("Fields"));
    auto *fields = new QVBoxLayout(what);
    fields->addWidget(m_tableFields);
    fields->addWidget(new QRadioButton(tr("All fields")));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel);
    m_save = buttons->button(QDialogButtonBox::Save);
    connect(buttons, &QDialogButtonBox::accepted, this, &ExportWindow::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_folder, &QLineEdit::textChanged, this, &ExportWindow::judgeFolder);
    connect(this, &QDialog::finished, this, &ExportWindow::end);
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(16);
    layout->addWidget(where);
    layout->addWidget(what);
    layout->addWidget(buttons);
    setTabOrder(m_folder, choose);
    setTabOrder(choose, m_format);
    setFolder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
}

void ExportWindow::beginSheet(std::function<void(const std::optional<ExportChoice> &)> done)
{
    m_done = std::move(done);
    m_format->setFocus();
    open();
}

void ExportWindow::setFolder(const QString &folder)
{
    m_folder->setText(folder);
    judgeFolder();
}

void ExportWindow::say(const QString &reason)
{
    m_reason->setText(reason);
    m_reason->setAccessibleName(reason);
    m_reason->setHidden(reason.isEmpty());
}

void ExportWindow::judgeFolder()
{
    const QFileInfo folder(m_folder->text());
    const bool isThere = folder.exists();
    m_save->setEnabled(folder.isDir() || (folder.isAbsolute() && !isThere));
    if (m_folder->text().isEmpty())
        say(tr("Choose a folder to export into."));
    else if (isThere && !folder.isDir())
        say(tr("This is a file, not a folder."));
    else if (!isThere)
        say(folder.isAbsolute() ? tr("This folder will be created.") : tr("There is no such folder."));
    else
        say({});
}

void ExportWindow::accept()
{
    if (!m_save->isEnabled())
        return;
    if (!QDir().mkpath(m_folder->text())) {
        say(tr("This folder cannot be created."));
        return;
    }
    QDialog::accept();
}

void ExportWindow::chooseFolder()
{
    const QStringList folders = askForFiles(this, FilesAsked::Folder, tr("Export into"), m_folder->text());
    if (!folders.isEmpty())
        setFolder(folders.front());
}

void ExportWindow::end(int result)
{
    const auto done = std::exchange(m_done, nullptr);
    if (!done)
        return;
    if (result != QDialog::Accepted) {
        done(std::nullopt);
        return;
    }
    const int tag = m_tableFields->isChecked() ? ExportContact::kTableFieldsTag : ExportContact::kAllFieldsTag;
    done(ExportChoice{m_folder->text(), m_format->currentText(), tag});
}
