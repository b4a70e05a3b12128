// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/activity/ActivityWindow.h"

#include "app/activity/OpenOutside.h"
#include "app/look/Controls.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QLabel>
#include <QListView>
#include <QRegularExpression>
#include <QShortcut>
#include <QUrl>

ActivityWindow::ActivityWindow(ActivityLog &log, QWidget *parent)
    : QWidget(parent, Qt::Window), m_log(log), m_list(new QListView(this))
{
    setWindowTitle(tr("Activity"));
    setFirstSize(*this, {640, 420});
    connect(new QShortcut(QKeySequence::Cancel, this), &QShortcut::activated, this, &QWidget::close);
    m_lines.setSourceModel(&log);
    m_lines.setFilterRole(ActivityLog::KindRole);
    m_list->setModel(&m_lines);
    m_list->setAccessibleName(tr("Activity"));
    m_list->setWordWrap(true);
    m_list->setIconSize({16, 16});
    m_list->setUniformItemSizes(false);
    auto *diagnostics = new QCheckBox(tr("Show &diagnostic lines"));
    const auto show = [this](bool all) {
        m_lines.setFilterRegularExpression(all
                ? QRegularExpression()
                : QRegularExpression(
                    QStringLiteral("[%1%2]").arg(int(ActivityLog::Kind::Done)).arg(int(ActivityLog::Kind::Failure))));
        m_list->scrollToBottom();
    };
    show(false);
    connect(diagnostics, &QCheckBox::toggled, this, show);
    connect(&m_lines, &QAbstractItemModel::rowsInserted, m_list, &QListView::scrollToBottom);
    connect(m_list, &QListView::activated, this, &ActivityWindow::openFolder);

    auto *hint = new QLabel(tr("Double-click an exported file to open its folder."));
    hint->setWordWrap(true);
    hint->setForegroundRole(QPalette::PlaceholderText);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(hint);
    layout->addWidget(m_list, 1);
    layout->addWidget(diagnostics);
}

void ActivityWindow::openFolder(const QModelIndex &line)
{
    const QString folder = line.data(ActivityLog::FolderRole).toString();
    if (!folder.isEmpty())
        openOutside(QUrl::fromLocalFile(folder), m_log);
}
